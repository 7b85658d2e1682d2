#include "platform/LogFolder.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace velmo {

namespace {

std::filesystem::path absolutePathIn(const char* variable) {
    const char* value = std::getenv(variable);
    std::filesystem::path path = value == nullptr ? "" : value;
    return path.is_absolute() ? path : std::filesystem::path();
}

std::filesystem::path home() {
    if (std::filesystem::path path = absolutePathIn("HOME"); !path.empty()) {
        return path;
    }
    const passwd* user = getpwuid(getuid());
    return user == nullptr ? "/" : user->pw_dir;
}

} // namespace

std::filesystem::path logFolder() {
    std::filesystem::path state = absolutePathIn("XDG_STATE_HOME");
    if (state.empty()) {
        state = home() / ".local" / "state";
    }
    return state / "velmo-studio";
}

} // namespace velmo
