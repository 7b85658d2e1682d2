#include "panels/welcome/PermissionWords.h"

namespace velmo::PermissionWords {

namespace {

using Media = DevicePermissions::Media;
using Standing = PermissionRow::Standing;

struct Words {
    const char* absent;
    const char* absentInstead;
    const char* refused;
    const char* silent;
};

constexpr Words kCamera{"Conecta una cámara y aparecerá aquí. También puedes grabar sin ella.", "Sin cámara",
                        "Tu usuario no puede abrir la cámara. Dale acceso a los dispositivos de video.",
                        "La cámara no da imagen. Revisa que otra app no la esté usando."};
constexpr Words kMicrophone{"Conecta un micrófono y aparecerá aquí.", "Sin micrófono",
                            "El servidor de sonido no deja abrir el micrófono.",
                            "El micrófono no da sonido. Revísalo en los ajustes de sonido."};
constexpr const char* kNoCapture = "El servidor gráfico no deja grabar la pantalla. Entra con una sesión X11.";
constexpr const char* kNotHere = "No disponible";
constexpr const char* kNoAccess = "Sin acceso";

} // namespace

Standing screen(PermissionState state, bool hasSettings) {
    Standing standing{state};
    if (state == PermissionState::denied && !hasSettings) {
        standing.word = QString::fromUtf8(kNoCapture);
        standing.instead = QString::fromUtf8(kNotHere);
    }
    return standing;
}

Standing device(Media media, PermissionState state, DeviceFinding finding, bool hasSettings) {
    const Words& words = media == Media::video ? kCamera : kMicrophone;
    Standing standing{state};
    switch (finding) {
    case DeviceFinding::absent:
        standing.word = QString::fromUtf8(words.absent);
        standing.instead = QString::fromUtf8(words.absentInstead);
        return standing;
    case DeviceFinding::refused:
        standing.word = QString::fromUtf8(words.refused);
        break;
    case DeviceFinding::silent:
        standing.word = QString::fromUtf8(words.silent);
        break;
    case DeviceFinding::unknown:
    case DeviceFinding::granted:
        break;
    }
    if (state == PermissionState::denied && !hasSettings) {
        standing.instead = QString::fromUtf8(kNoAccess);
    }
    return standing;
}

} // namespace velmo::PermissionWords
