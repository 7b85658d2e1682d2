#include "capture/RecorderError.h"

#include <string>

namespace velmo {

Error RecorderError::writer(std::string_view message) {
    return {kDomain, 0, "No se pudo escribir el video. " + std::string(message)};
}

Error RecorderError::noSource(std::string_view message) {
    return {kDomain, 1, std::string(message)};
}

Error RecorderError::noFrames() {
    return {kDomain, 2, "La grabación terminó antes de capturar imagen."};
}

} // namespace velmo
