#include "session/Preflight.h"

#include <algorithm>

namespace velmo {
namespace {

constexpr double kBitsPerPixel = 0.15;
constexpr double kLeastVideoBitRate = 6'000'000;
constexpr double kSoundBitRate = 320'000;
constexpr int kEnoughMinutes = 20;
constexpr int kLowBatteryPercent = 20;

} // namespace

std::optional<QString> diskWarning(std::optional<std::int64_t> available, const Screen& screen, VideoQuality quality,
                                   int fps) {
    if (!available || *available < 1) {
        return std::nullopt;
    }
    const VideoSize video = size(quality, screen.frame.size(), screen.backingScaleFactor);
    const double pictures = double(video.width) * video.height * fps * kBitsPerPixel;
    const double bitRate = std::max(pictures, kLeastVideoBitRate) + kSoundBitRate;
    const auto minutes = static_cast<std::int64_t>(double(*available) * 8 / bitRate / 60);
    if (minutes >= kEnoughMinutes) {
        return std::nullopt;
    }
    if (minutes < 1) {
        return QStringLiteral("Casi no queda espacio en el disco para grabar.");
    }
    return QStringLiteral("Queda espacio en el disco para unos %1 minutos de grabación.").arg(minutes);
}

QStringList batteryWarnings(const std::vector<PowerSource>& sources) {
    QStringList lines;
    for (const PowerSource& source : sources) {
        if (source.state != kBatteryPower || !source.currentCapacity || source.maxCapacity.value_or(0) < 1) {
            continue;
        }
        const std::int64_t percent = std::int64_t(*source.currentCapacity) * 100 / *source.maxCapacity;
        if (percent < kLowBatteryPercent) {
            lines << QStringLiteral("La batería está al %1 % y el cargador no está conectado.").arg(percent);
        }
    }
    return lines;
}

} // namespace velmo
