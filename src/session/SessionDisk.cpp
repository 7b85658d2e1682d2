#include "session/RecorderController.h"

#include <algorithm>

// The disk that is recorded on: told in time that it fills up, and the recording ended while all of it can be saved.

namespace velmo {

namespace {

constexpr double kLookSeconds = 5;
constexpr double kLowFlashSeconds = 8;

} // namespace

void RecorderController::startDiskWatch() {
    diskGuard_ = {};
    diskTimer_ = services_.timers.repeat(kLookSeconds, [this] {
        schedule([this] {
            if (isActive()) {
                checkDisk();
            }
        });
    });
}

void RecorderController::checkDisk() {
    const auto available = services_.disk.available(services_.library.folder());
    const auto size = fileURL_ ? services_.disk.size(*fileURL_) : std::nullopt;
    if (!available || !size) {
        return; // nothing known; the writer tells when it can write no more
    }
    switch (diskGuard_.judge(now(), *size, *available)) {
    case DiskGuard::Verdict::enough:
        break;
    case DiskGuard::Verdict::low: {
        const int minutes = std::max(1, static_cast<int>(diskGuard_.secondsLeft() / 60 + 0.5));
        showFlash(minutes == 1 ? QStringLiteral("Queda poco disco · 1 minuto más de grabación")
                               : QStringLiteral("Queda poco disco · unos %1 minutos más de grabación").arg(minutes),
                  kLowFlashSeconds);
        break;
    }
    case DiskGuard::Verdict::over:
        endedBy_ = QStringLiteral("El disco está casi lleno.");
        stop();
        break;
    }
}

} // namespace velmo
