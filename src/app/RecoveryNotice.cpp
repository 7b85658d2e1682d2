#include "app/RecoveryNotice.h"

#include <utility>

namespace velmo {

RecoveryNotice::RecoveryNotice(Recovery& recovery, RecorderController& recorder, LibraryWindowPort& window,
                               AlertPort& alerts)
    : recovery_(recovery), recorder_(recorder), window_(window), alerts_(alerts) {
    connect(&recovery, &Recovery::finished, this, &RecoveryNotice::tellWhenIdle);
    connect(&recorder, &RecorderController::stateChanged, this, &RecoveryNotice::tellWhenIdle, Qt::QueuedConnection);
}

std::optional<QString> RecoveryNotice::sentence(std::size_t recovered, const QString& title, int failures) {
    if (recovered == 1) {
        return QStringLiteral("Se recuperó «%1», una grabación que había quedado sin terminar.").arg(title);
    }
    if (recovered > 1) {
        return QStringLiteral("Se recuperaron %1 grabaciones que habían quedado sin terminar.").arg(recovered);
    }
    if (failures > 0) {
        return QStringLiteral("Quedó una grabación sin terminar que todavía no se pudo recuperar; se intentará otra "
                              "vez al volver a abrir Velmo Studio.");
    }
    return std::nullopt;
}

void RecoveryNotice::tellWhenIdle() {
    if (recovery_.isDone() && recorder_.state() == RecorderController::State::idle && !std::exchange(told_, true)) {
        tell();
    }
}

QCoro::Task<void> RecoveryNotice::tell() {
    const auto& recovered = recovery_.recovered();
    const QString title = recovered.empty() ? QString() : QString::fromStdString(recovered.back().stem().native());
    const auto text = sentence(recovered.size(), title, recovery_.failures());
    if (!text) {
        co_return;
    }
    if (!recovered.empty()) {
        window_.show(recovered.back());
    }
    co_await alerts_.inform(recovered.empty()       ? QStringLiteral("Grabación sin terminar")
                            : recovered.size() == 1 ? QStringLiteral("Grabación recuperada")
                                                    : QStringLiteral("Grabaciones recuperadas"),
                            *text);
}

} // namespace velmo
