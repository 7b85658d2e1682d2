#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/log.h>
}

#include <cerrno>
#include <string>

namespace velmo::internal {

namespace {

template <typename Code>
struct Words {
    Code code;
    const char* text;
};

constexpr Words<MediaError> kMediaWords[] = {
    {MediaError::notMedia, "El archivo no es un video."},
    {MediaError::noPicture, "El video no tiene imagen en ese momento."},
    {MediaError::encoder, "El codificador no pudo continuar."},
    {MediaError::readFailed, "El archivo no se pudo leer hasta el final."},
    {MediaError::nothingRecorded, "La grabación terminó antes de capturar imagen."},
};

constexpr Words<int> kSystemWords[] = {
    {ENOSPC, "El disco está lleno."},
    {EDQUOT, "El disco está lleno."},
    {EFBIG, "El archivo es demasiado grande para este disco."},
    {EACCES, "No hay permiso para escribir en la carpeta."},
    {EPERM, "No hay permiso para escribir en la carpeta."},
    {EROFS, "El disco es de solo lectura."},
    {ENOENT, "No se encuentra el archivo o su carpeta."},
    {ENOTDIR, "No se encuentra el archivo o su carpeta."},
    {EEXIST, "Ya hay un archivo con ese nombre."},
    {EISDIR, "El archivo es una carpeta."},
    {ENAMETOOLONG, "El nombre del archivo es demasiado largo."},
    {EIO, "El disco dio un error."},
    {ENODEV, "El disco ya no está conectado."},
    {ETIMEDOUT, "El archivo tardó demasiado en responder."},
    {ENOMEM, "No queda memoria."},
};

} // namespace

Error mediaError(MediaError code) {
    for (const auto& words : kMediaWords) {
        if (words.code == code) {
            return {kMediaErrorDomain, static_cast<int>(code), words.text};
        }
    }
    return {kMediaErrorDomain, static_cast<int>(code), ""};
}

Error systemError(int number) {
    for (const auto& words : kSystemWords) {
        if (words.code == number) {
            return {kMediaErrorDomain, number, words.text};
        }
    }
    return {kMediaErrorDomain, number, "Error del sistema " + std::to_string(number) + "."};
}

Error libraryError(int returned, MediaError otherwise) {
    const int number = AVUNERROR(returned);
    for (const auto& words : kSystemWords) {
        if (words.code == number) {
            return systemError(number);
        }
    }
    return mediaError(otherwise);
}

void silenceLibraries() {
    av_log_set_level(AV_LOG_QUIET);
}

} // namespace velmo::internal
