#pragma once

#include "base/Geometry.h"
#include "settings/EnumTable.h"

namespace velmo {

enum class VideoQuality { fullHD, retina, uhd4k };

template <>
struct EnumTable<VideoQuality> {
    struct Row {
        VideoQuality value;
        std::string_view raw;
    };
    static constexpr std::array<Row, 3> rows{{
        {VideoQuality::fullHD, "fullHD"},
        {VideoQuality::retina, "retina"},
        {VideoQuality::uhd4k, "uhd4k"},
    }};
    static_assert(rowsInOrder(rows));
};

/// In pixels, both even.
struct VideoSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const VideoSize&, const VideoSize&) = default;
};

/// The video's size for a screen of `points` at `scale` pixels a point. `fullHD` and `uhd4k` are 1920 and 3840
/// wide whatever the screen; `retina` is the screen's own pixels, at most 3840 wide. 0 by 0 for an empty screen.
VideoSize size(VideoQuality quality, Size points, double scale);

} // namespace velmo
