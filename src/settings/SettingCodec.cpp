#include "settings/SettingCodec.h"

#include "settings/RectText.h"

namespace velmo {

namespace {

constexpr double kLeastRegionSide = 0.05;
// A little past 1, for what fractions of a screen lose in rounding.
constexpr double kRegionMaximum = 1.001;

bool isUsableRegion(const Rect& region) {
    return region.width > kLeastRegionSide && region.height > kLeastRegionSide && region.minX() >= 0 &&
           region.minY() >= 0 && region.maxX() <= kRegionMaximum && region.maxY() <= kRegionMaximum;
}

} // namespace

std::optional<VideoQuality> SettingCodec<VideoQuality>::read(const DefaultsStore& store, const QString& key) {
    const auto raw = store.text(key);
    if (const auto quality = raw ? fromRawValue<VideoQuality>(*raw) : std::nullopt) {
        return quality;
    }
    const auto highResolution = store.boolean(QStringLiteral("highResolution"));
    if (!highResolution) {
        return std::nullopt;
    }
    return *highResolution ? VideoQuality::retina : VideoQuality::fullHD;
}

void SettingCodec<VideoQuality>::write(DefaultsStore& store, const QString& key, VideoQuality value) {
    store.setText(key, rawValue(value));
}

std::optional<std::optional<Rect>> SettingCodec<std::optional<Rect>>::read(const DefaultsStore& store,
                                                                           const QString& key) {
    const auto text = store.text(key);
    const auto region = text ? rectFromText(*text) : std::nullopt;
    return region && isUsableRegion(*region) ? std::optional(region) : std::nullopt;
}

void SettingCodec<std::optional<Rect>>::write(DefaultsStore& store, const QString& key,
                                              const std::optional<Rect>& value) {
    if (value) {
        store.setText(key, rectText(*value));
    } else {
        store.remove(key);
    }
}

} // namespace velmo
