#include "platform/PlatformWords.h"
#include "session/RecorderController.h"
#include "session/SessionErrors.h"
#include "session/internal/Tell.h"

// The ways in which a start can fail, told to the log and to the user.

namespace velmo {

using internal::tell;

namespace {

QString described(const Error& error) {
    return QStringLiteral("%1 %2 %3")
        .arg(QString::fromStdString(error.domain))
        .arg(error.code)
        .arg(QString::fromStdString(error.text));
}

QString truth(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

void RecorderController::abort() {
    setState(State::idle);
    hidePreviews();
}

RecorderController::Task RecorderController::failQuery(Error error) {
    log(QStringLiteral("SCShareableContent falló: %1 preflight=%2")
            .arg(described(error), truth(services_.capture.preflightAccess())));
    abort();
    if (isPermissionError(error)) {
        services_.capture.requestAccess();
        co_await screenPermissionAlert();
    } else {
        co_await inform("No se pudo acceder a la pantalla", QString::fromStdString(error.text));
    }
}

RecorderController::Task RecorderController::failNoCamera() {
    const Life life = life_;
    abort();
    co_await inform("Activa una cámara", "El modo Cámara necesita una cámara conectada y con permiso.");
    if (!life.expired()) {
        openSetup();
    }
}

RecorderController::Task RecorderController::failStart(Error error, RecordMode mode) {
    const Life life = life_;
    finish(false);
    log(QStringLiteral("inicio de grabación falló: %1").arg(described(error)));
    if (usesScreen(mode) && isPermissionError(error)) {
        co_await screenPermissionAlert();
    } else {
        co_await inform("No se pudo empezar a grabar", QString::fromStdString(error.text));
    }
    if (!life.expired()) {
        tell(surfaces_.libraryWindow, &LibraryWindowPort::show, std::nullopt);
    }
}

RecorderController::Task RecorderController::screenPermissionAlert() {
    const Life life = life_;
    const QStringList buttons{QStringLiteral("Abrir Ajustes"), QStringLiteral("Ahora no")};
    const QString text = QString::fromUtf8(PlatformWords::kPermitScreenCapture.here);
    const int chosen = co_await ask("Permite la grabación de pantalla", text, buttons, false);
    if (!life.expired() && chosen == 0) {
        services_.application.openScreenCaptureSettings();
    }
}

} // namespace velmo
