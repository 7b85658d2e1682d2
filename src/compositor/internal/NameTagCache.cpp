#include "compositor/internal/NameTagCache.h"

#include "compositor/NameTagImage.h"

#include <cmath>
#include <cstring>

namespace velmo::internal {

namespace {

constexpr double kNameSize = 0.022; // of the height of the frame
constexpr double kMargins = 0.03;   // of the height of the frame, both together

FrameRef bufferOf(const QImage& image) {
    FrameRef buffer = PixelBuffer::create(PixelFormat::bgra, image.width(), image.height());
    if (buffer) {
        for (int y = 0; y < image.height(); ++y) {
            std::memcpy(buffer->plane(0).row(y), image.constScanLine(y), static_cast<std::size_t>(image.width()) * 4);
        }
    }
    return buffer;
}

} // namespace

FrameRef NameTagCache::find(const NameTagText& text, int columnWidth, int frameHeight) {
    if (picture_ && text_ == text && columnWidth_ == columnWidth && frameHeight_ == frameHeight) {
        return picture_;
    }
    const auto image = NameTag::image(QString::fromStdString(text.name), QString::fromStdString(text.role),
                                      std::round(frameHeight * kNameSize), columnWidth - frameHeight * kMargins, 1.0);
    text_ = text;
    columnWidth_ = columnWidth;
    frameHeight_ = frameHeight;
    picture_ = image ? bufferOf(image->pixels) : nullptr;
    return picture_;
}

} // namespace velmo::internal
