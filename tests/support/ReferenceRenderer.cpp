#include "support/ReferenceRenderer.h"

#include "compositor/PointerBubble.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

namespace velmo::test {

namespace {

std::uint8_t rounded(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::floor(value + 0.5), 0.0, 255.0));
}

/// A plane in image space: unit (0, 0) is at the lower left.
class ImagePlane {
public:
    ImagePlane(const PixelBuffer& picture, int index)
        : view_(picture.plane(index)), isBgra_(picture.format() == PixelFormat::bgra), isChroma_(index == 1),
          pictureHeight_(picture.height()) {}

    int width() const { return view_.width; }
    int height() const { return view_.height; }
    bool isBgra() const { return isBgra_; }
    bool isChroma() const { return isChroma_; }
    int components() const { return isBgra_ ? 4 : isChroma_ ? 2 : 1; }
    double black() const { return isBgra_ ? 0 : isChroma_ ? 128 : 16; }

    std::uint8_t& component(int x, int y, int c) const { return view_.row(view_.height - 1 - y)[x * components() + c]; }

    /// The middle of a unit in pixels of the picture. Chroma covers two by two, counted from the upper left.
    Point middle(int x, int y) const {
        const int size = isChroma_ ? 2 : 1;
        return {(x + 0.5) * size, pictureHeight_ - (view_.height - 1 - y + 0.5) * size};
    }

    double bilinear(double x, double y, int c) const {
        const double xIn = std::clamp(x, 0.0, view_.width - 1.0);
        const double yIn = std::clamp(y, 0.0, view_.height - 1.0);
        const int left = static_cast<int>(std::floor(xIn));
        const int bottom = static_cast<int>(std::floor(yIn));
        const int right = std::min(left + 1, view_.width - 1);
        const int top = std::min(bottom + 1, view_.height - 1);
        const double across = xIn - left;
        const double up = yIn - bottom;
        return (1 - up) * ((1 - across) * component(left, bottom, c) + across * component(right, bottom, c)) +
               up * ((1 - across) * component(left, top, c) + across * component(right, top, c));
    }

private:
    PlaneView view_;
    bool isBgra_;
    bool isChroma_;
    int pictureHeight_;
};

class Renderer {
public:
    Renderer(const PixelBuffer& source, const ReferenceScene& scene)
        : scene_(scene), factor_(std::max(scene.scale, 1.0)), width_(source.width()), height_(source.height()),
          bubble_(drawnBubble()) {}

    void render(const ImagePlane& source, const ImagePlane& target) const {
        for (int j = 0; j < target.height(); ++j) {
            for (int i = 0; i < target.width(); ++i) {
                const double gain = gainAt(target.middle(i, j));
                for (int c = 0; c < target.components(); ++c) {
                    const double lit = c == 3 ? 1 : gain;
                    const double below = sampled(source, i, j, c);
                    target.component(i, j, c) = rounded(source.black() + (below - source.black()) * lit);
                }
                layBubble(target, i, j);
            }
        }
    }

private:
    Point inFrame(Point place) const {
        const double cropX = scene_.center.x * width_ - width_ / factor_ / 2;
        const double cropY = scene_.center.y * height_ - height_ / factor_ / 2;
        return {(place.x * width_ - cropX) * factor_, (place.y * height_ - cropY) * factor_};
    }

    double sampled(const ImagePlane& source, int i, int j, int c) const {
        const double w = source.width();
        const double h = source.height();
        const double x = w * (scene_.center.x + ((i + 0.5) / w - 0.5) / factor_) - 0.5;
        const double y = h * (scene_.center.y + ((j + 0.5) / h - 0.5) / factor_) - 0.5;
        return source.bilinear(x, y, c);
    }

    double gainAt(Point pixel) const {
        const Point spot = inFrame(scene_.spot);
        const double inner = height_ * 0.17;
        const double outer = inner * 1.45;
        const double distance = std::hypot(pixel.x - spot.x, pixel.y - spot.y);
        const double mask = std::clamp((outer - distance) / (outer - inner), 0.0, 1.0);
        const double dimmed = 1 - 0.78 * scene_.spotAlpha;
        return std::pow(mask + (1 - mask) * dimmed, 1 / 2.2);
    }

    /// The figure on a clear sheet with room all round.
    QImage drawnBubble() const {
        if (!scene_.bubble) {
            return {};
        }
        const Point sheet = scene_.bubble->sheet;
        const Point exact = inFrame(scene_.bubble->at);
        const double x = std::floor(exact.x * 64 + 0.5) / 64;
        const double y = std::floor((height_ - exact.y) * 64 + 0.5) / 64;
        const double side = 0.034 * height_ * 4.2 + 80;
        QImage drawn(static_cast<int>(x - sheet.x + side), static_cast<int>(y - sheet.y + side),
                     QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        PointerBubble::draw(painter, {x - sheet.x, y - sheet.y}, 0.034 * height_, scene_.bubble->age,
                            scene_.bubble->colors);
        return drawn;
    }

    void layBubble(const ImagePlane& target, int i, int j) const {
        if (bubble_.isNull()) {
            return;
        }
        const int size = target.isChroma() ? 2 : 1;
        const int top = (target.height() - 1 - j) * size;
        std::array<double, 4> mean{}; // blue, green, red, alpha from 0 to 1
        for (int k = 0; k < size * size; ++k) {
            const QRgb pixel = pixelOf(i * size + k % size, top + k / size);
            const int parts[] = {qBlue(pixel), qGreen(pixel), qRed(pixel), qAlpha(pixel)};
            for (std::size_t c = 0; c < 4; ++c) {
                mean[c] += parts[c] / 255.0 / (size * size);
            }
        }
        for (int c = 0; c < target.components(); ++c) {
            std::uint8_t& below = target.component(i, j, c);
            below = rounded(codeOf(target, mean, c) + (1 - mean[3]) * below);
        }
    }

    /// As stored: premultiplied. Clear beside the sheet.
    QRgb pixelOf(int frameX, int frameY) const {
        const int x = frameX - static_cast<int>(scene_.bubble->sheet.x);
        const int y = frameY - static_cast<int>(scene_.bubble->sheet.y);
        return bubble_.valid(x, y) ? reinterpret_cast<const QRgb*>(bubble_.constScanLine(y))[x] : 0;
    }

    static double codeOf(const ImagePlane& target, const std::array<double, 4>& color, int c) {
        const auto [blue, green, red, alpha] = color;
        if (target.isBgra()) {
            return 255 * color[static_cast<std::size_t>(c)];
        }
        const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
        if (!target.isChroma()) {
            return 16 * alpha + 219 * luma;
        }
        return 128 * alpha + 224 * (c == 0 ? (blue - luma) / 1.8556 : (red - luma) / 1.5748);
    }

    const ReferenceScene& scene_;
    double factor_;
    int width_;
    int height_;
    QImage bubble_;
};

} // namespace

FrameRef referenceRender(const PixelBuffer& source, const ReferenceScene& scene) {
    FrameRef target = PixelBuffer::create(source.format(), source.width(), source.height());
    target->setColorTags(source.colorTags());
    const Renderer renderer(source, scene);
    for (int p = 0; p < source.planeCount(); ++p) {
        renderer.render(ImagePlane(source, p), ImagePlane(*target, p));
    }
    return target;
}

FrameRef referenceRender(const PixelBuffer& source, Point center, double scale) {
    ReferenceScene scene;
    scene.center = center;
    scene.scale = scale;
    return referenceRender(source, scene);
}

} // namespace velmo::test
