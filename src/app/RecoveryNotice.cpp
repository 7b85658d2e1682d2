#include "app/RecoveryNotice.h"

#include <QStringList>

#include <utility>

namespace velmo {

RecoveryNotice::RecoveryNotice(Recovery& recovery, RecorderController& recorder, LibraryWindowPort& window,
                               AlertPort& alerts)
    : recovery_(recovery), recorder_(recorder), window_(window), alerts_(alerts) {
    connect(&recovery, &Recovery::finished, this, &RecoveryNotice::tellWhenIdle);
    connect(&recorder, &RecorderController::stateChanged, this, &RecoveryNotice::tellWhenIdle, Qt::QueuedConnection);
}

std::optional<QString> RecoveryNotice::text(std::size_t recovered, const QString& title, int failures) {
    QStringList sentences;
    if (recovered == 1) {
        sentences << QStringLiteral("Se recuperó «%1», una grabación que había quedado sin terminar.").arg(title);
    } else if (recovered > 1) {
        sentences << QStringLiteral("Se recuperaron %1 grabaciones que habían quedado sin terminar.").arg(recovered);
    }
    if (failures == 1) {
        sentences << QStringLiteral("Quedó una grabación sin terminar que todavía no se pudo recuperar; se intentará "
                                    "otra vez al volver a abrir Velmo Studio.");
    } else if (failures > 1) {
        sentences << QStringLiteral("Quedaron %1 grabaciones sin terminar que todavía no se pudieron recuperar; se "
                                    "intentará otra vez al volver a abrir Velmo Studio.")
                         .arg(failures);
    }
    return sentences.isEmpty() ? std::nullopt : std::optional(sentences.join(QLatin1Char(' ')));
}

void RecoveryNotice::tellWhenIdle() {
    if (recovery_.isDone() && recorder_.state() == RecorderController::State::idle && !std::exchange(told_, true)) {
        tell();
    }
}

QCoro::Task<void> RecoveryNotice::tell() {
    const auto& recovered = recovery_.recovered();
    const QString title = recovered.empty() ? QString() : QString::fromStdString(recovered.back().stem().native());
    const auto news = text(recovered.size(), title, recovery_.failures());
    if (!news) {
        co_return;
    }
    if (!recovered.empty()) {
        window_.show(recovered.back());
    }
    co_await alerts_.inform(recovered.empty()       ? QStringLiteral("Grabación sin terminar")
                            : recovered.size() == 1 ? QStringLiteral("Grabación recuperada")
                                                    : QStringLiteral("Grabaciones recuperadas"),
                            *news);
}

} // namespace velmo
