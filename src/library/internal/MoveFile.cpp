#include "library/internal/MoveFile.h"

#include "base/AtomicFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <system_error>

namespace velmo::internal {

namespace {

struct FailureText {
    int number;
    const char* text;
};

constexpr std::array kFailures{
    FailureText{ENOENT, "El video ya no está en la carpeta de grabaciones."},
    FailureText{EACCES, "No tienes permiso para cambiar la carpeta de grabaciones."},
    FailureText{EPERM, "No tienes permiso para cambiar la carpeta de grabaciones."},
    FailureText{EROFS, "La carpeta de grabaciones es de solo lectura."},
    FailureText{ENOSPC, "No queda espacio en el disco."},
    FailureText{ENAMETOOLONG, "Ese nombre es demasiado largo."},
};

Error moveError(int number) {
    for (const FailureText& failure : kFailures) {
        if (failure.number == number) {
            return {kPosixErrorDomain, number, failure.text};
        }
    }
    return {kPosixErrorDomain, number, "No se pudo cambiar el nombre: " + std::generic_category().message(number)};
}

Error nameTaken() {
    return {"VelmoStudio", 1, "Ya existe un video con ese nombre."};
}

int renameKeepingTarget(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // This file system cannot rename without replacing; the caller has looked just before.
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

Result<void> moveVideo(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code ignored;
    if (std::filesystem::exists(std::filesystem::symlink_status(to, ignored))) {
        return nameTaken();
    }
    const int failure = renameKeepingTarget(from, to);
    if (failure == 0) {
        return {};
    }
    return failure == EEXIST ? nameTaken() : moveError(failure);
}

} // namespace velmo::internal
