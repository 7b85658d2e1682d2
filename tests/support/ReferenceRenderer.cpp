#include "support/ReferenceRenderer.h"

#include "compositor/PointerBubble.h"
#include "support/ReferencePlane.h"
#include "support/ReferenceSurfaces.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace velmo::test {

namespace {

class Renderer {
public:
    Renderer(const PixelBuffer& source, const ReferenceScene& scene)
        : scene_(scene), factor_(std::max(scene.scale, 1.0)), width_(source.width()), height_(source.height()),
          bubble_(drawnBubble()) {}

    void render(const ReferencePlane& source, ReferencePlane& target) const {
        for (int j = 0; j < target.height(); ++j) {
            for (int i = 0; i < target.width(); ++i) {
                const double gain = gainAt(target.middle(i, j));
                for (int c = 0; c < target.components(); ++c) {
                    const double lit = c == 3 ? 1 : gain;
                    const double below = sampled(source, i, j, c);
                    target.component(i, j, c) = source.black() + (below - source.black()) * lit;
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

    double sampled(const ReferencePlane& source, int i, int j, int c) const {
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

    void layBubble(ReferencePlane& target, int i, int j) const {
        if (bubble_.isNull()) {
            return;
        }
        const int size = target.isChroma() ? 2 : 1;
        const int top = (target.height() - 1 - j) * size;
        ReferenceColor mean{};
        for (int k = 0; k < size * size; ++k) {
            const QRgb pixel = pixelOf(i * size + k % size, top + k / size);
            const int parts[] = {qBlue(pixel), qGreen(pixel), qRed(pixel), qAlpha(pixel)};
            for (std::size_t c = 0; c < 4; ++c) {
                mean[c] += parts[c] / 255.0 / (size * size);
            }
        }
        for (int c = 0; c < target.components(); ++c) {
            double& below = target.component(i, j, c);
            below = target.codeOf(mean, c) + (1 - mean[3]) * below;
        }
    }

    /// As stored: premultiplied. Clear beside the sheet.
    QRgb pixelOf(int frameX, int frameY) const {
        const int x = frameX - static_cast<int>(scene_.bubble->sheet.x);
        const int y = frameY - static_cast<int>(scene_.bubble->sheet.y);
        return bubble_.valid(x, y) ? reinterpret_cast<const QRgb*>(bubble_.constScanLine(y))[x] : 0;
    }

    const ReferenceScene& scene_;
    double factor_;
    int width_;
    int height_;
    QImage bubble_;
};

} // namespace

FrameRef referenceRender(const PixelBuffer& source, const ReferenceScene& scene) {
    const ReferencePicture screen(source);
    ReferencePicture frame(source);
    const Renderer renderer(source, scene);
    for (std::size_t p = 0; p < screen.planes.size(); ++p) {
        renderer.render(screen.planes[p], frame.planes[p]);
    }
    for (const ReferenceScene::Surface& surface : scene.surfaces) {
        layReferenceSurface(frame, screen, surface, scene.screen);
    }
    if (scene.column) {
        placeBesideColumn(frame, *scene.column);
    }
    return frame.rounded();
}

FrameRef referenceRender(const PixelBuffer& source, Point center, double scale) {
    ReferenceScene scene;
    scene.center = center;
    scene.scale = scale;
    return referenceRender(source, scene);
}

} // namespace velmo::test
