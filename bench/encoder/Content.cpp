#include "encoder/Content.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace velmo::bench {

namespace {

constexpr int kLine = 24;  // rows for each line of text
constexpr int kGlyph = 10; // columns for each letter
constexpr int kWord = 6;   // letters and the blank after them

std::uint32_t mixed(std::uint32_t value) {
    value ^= value >> 16;
    value *= 0x7feb352dU;
    value ^= value >> 15;
    value *= 0x846ca68bU;
    return value ^ (value >> 16);
}

// Dark strokes on light ground, with the soft edges that text has on a screen.
std::uint8_t inkAt(int x, int row) {
    const int line = row / kLine;
    const int column = x / kGlyph;
    if (row % kLine < 5 || row % kLine > 18 || column % kWord == kWord - 1 || x % kGlyph > 7) {
        return 235;
    }
    const std::uint32_t glyph = mixed(static_cast<std::uint32_t>(line * 977 + column));
    const int cell = (row % kLine - 5) / 3 * 4 + x % kGlyph / 2;
    if ((glyph >> (cell % 20) & 1U) == 0) {
        return 235;
    }
    return (x + row) % 2 == 0 ? 40 : 90;
}

} // namespace

const char* nameOf(Content content) {
    constexpr const char* kNames[] = {"still", "lecture", "scroll", "motion"};
    return kNames[static_cast<std::size_t>(content)];
}

Painter::Painter(Content content, int width, int height) : content_(content), width_(width), height_(height) {}

FrameRef Painter::next() {
    const int frame = frame_++;
    switch (content_) {
    case Content::still:
        return last_ = last_ ? last_ : page(0, 1 << 20);
    case Content::lecture:
        if (!last_ || frame % 3 == 0) {
            last_ = page(frame / 300 * 5000, 200 + frame % 300 / 3);
        }
        return last_;
    case Content::scroll:
        return last_ = page(frame * 8, 1 << 20);
    case Content::motion:
        return last_ = texture();
    }
    return nullptr;
}

FrameRef Painter::page(int firstRow, int words) const {
    FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width_, height_);
    const PlaneView luma = picture->plane(0);
    const int wordsInLine = width_ / (kGlyph * kWord);
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const bool written = y / kLine * wordsInLine + x / (kGlyph * kWord) < words;
            luma.row(y)[x] = written ? inkAt(x, firstRow + y) : 235;
        }
    }
    const PlaneView chroma = picture->plane(1);
    for (int y = 0; y < chroma.height; ++y) {
        std::memset(chroma.row(y), 128, static_cast<std::size_t>(chroma.width) * 2);
    }
    return picture;
}

FrameRef Painter::texture() const {
    FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width_, height_);
    const auto wave = [](int a, int b) {
        return static_cast<int>(mixed(static_cast<std::uint32_t>(a >> 3) * 4099U + static_cast<std::uint32_t>(b >> 3)) &
                                63U);
    };
    const PlaneView luma = picture->plane(0);
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const double swell = 40 * std::sin((x + frame_ * 5) * 0.011) * std::cos((y - frame_ * 3) * 0.013);
            luma.row(y)[x] =
                static_cast<std::uint8_t>(90 + swell + wave(x + frame_ * 4, y + frame_ * 2) / 2 + (x * 7 + y * 3) % 8);
        }
    }
    const PlaneView chroma = picture->plane(1);
    for (int y = 0; y < chroma.height; ++y) {
        for (int x = 0; x < chroma.width; ++x) {
            chroma.row(y)[x * 2] = static_cast<std::uint8_t>(96 + wave(x + frame_ * 2, y));
            chroma.row(y)[x * 2 + 1] = static_cast<std::uint8_t>(96 + wave(x, y + frame_ * 3));
        }
    }
    return picture;
}

} // namespace velmo::bench
