#include "support/ReferenceSurfaces.h"

#include "compositor/NameTagImage.h"

#include <QImage>
#include <QPainter>
#include <cstring>
#include <optional>

namespace velmo::test {

namespace {

/// How much of the stretch from `low` to `high` lies between `from` and `to`.
double covered(double low, double high, double from, double to) {
    return std::clamp((std::min(high, to) - std::max(low, from)) / (high - low), 0.0, 1.0);
}

/// A premultiplied picture scaled to `place` (frame pixels, y up), seen at the pixel whose lower left corner is (x, y).
ReferenceColor colorAt(const ReferencePlane& picture, const Rect& place, int x, int y) {
    const double share = covered(x, x + 1, place.minX(), place.maxX()) * covered(y, y + 1, place.minY(), place.maxY());
    const double across = (x + 0.5 - place.minX()) / place.width * picture.width() - 0.5;
    const double up = (y + 0.5 - place.minY()) / place.height * picture.height() - 0.5;
    ReferenceColor color{};
    for (int c = 0; share > 0 && c < 4; ++c) {
        color[static_cast<std::size_t>(c)] = share * picture.bilinear(across, up, c) / 255;
    }
    return color;
}

void layPicture(ReferencePicture& target, const PixelBuffer& picture, const Rect& place) {
    const ReferencePlane from(picture, 0);
    for (ReferencePlane& plane : target.planes) {
        const int size = plane.pixelsPerUnit();
        for (int j = 0; j < plane.height(); ++j) {
            for (int i = 0; i < plane.width(); ++i) {
                const int top = target.height - 1 - (plane.height() - 1 - j) * size;
                ReferenceColor mean{};
                for (int k = 0; k < size * size; ++k) {
                    const ReferenceColor one = colorAt(from, place, i * size + k % size, top - k / size);
                    for (std::size_t c = 0; c < 4; ++c) {
                        mean[c] += one[c] / (size * size);
                    }
                }
                for (int c = 0; c < plane.components(); ++c) {
                    double& below = plane.component(i, j, c);
                    below = plane.codeOf(mean, c) + (1 - mean[3]) * below;
                }
            }
        }
    }
}

/// White in the shape of a bubble that fills it.
QImage shapeOf(int width, int height, bool circle, double corner) {
    QImage shape(width, height, QImage::Format_Grayscale8);
    shape.fill(Qt::black);
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const double shorter = std::min(width, height);
    const double radius = std::min(corner * shorter + 4, shorter / 2);
    if (circle) {
        painter.drawEllipse(QRectF(0, 0, width, height));
    } else {
        painter.drawRoundedRect(QRectF(0, 0, width, height), radius, radius);
    }
    return shape;
}

/// `place` in frame pixels, y up.
void pasteBack(ReferencePicture& target, const ReferencePicture& source, const Rect& place, bool circle,
               double corner) {
    const int left = static_cast<int>(std::floor(place.minX()));
    const int bottom = static_cast<int>(std::floor(place.minY()));
    const int width = static_cast<int>(std::ceil(place.maxX())) - left;
    const int height = static_cast<int>(std::ceil(place.maxY())) - bottom;
    if (width <= 4) {
        return;
    }
    const QImage shape = shapeOf(width, height, circle, corner);
    for (std::size_t p = 0; p < target.planes.size(); ++p) {
        ReferencePlane& plane = target.planes[p];
        const ReferencePlane& screen = source.planes[p];
        const int size = plane.pixelsPerUnit();
        for (int j = 0; j < plane.height(); ++j) {
            for (int i = 0; i < plane.width(); ++i) {
                double share = 0;
                for (int k = 0; k < size * size; ++k) {
                    const int x = i * size + k % size - left;
                    const int y = (plane.height() - 1 - j) * size + k / size - (target.height - bottom - height);
                    share += shape.valid(x, y) ? shape.constScanLine(y)[x] / 255.0 / (size * size) : 0;
                }
                for (int c = 0; c < plane.components(); ++c) {
                    double& below = plane.component(i, j, c);
                    below += (screen.component(i, j, c) - below) * share;
                }
            }
        }
    }
}

/// A part of the frame (y up) and what it shows, per component of a unit.
struct Part {
    Rect place;
    double code;
};

/// What the unit has of the parts, each over those before it.
double composed(double code, const ReferencePlane& plane, int frameWidth, int frameHeight, int i, int j,
                std::initializer_list<Part> parts) {
    const int size = plane.pixelsPerUnit();
    const double right = std::min((i + 1) * size, frameWidth);
    const int fromTop = plane.height() - 1 - j;
    const double bottom = std::max(frameHeight - (fromTop + 1) * size, 0);
    const double top = frameHeight - fromTop * size;
    for (const auto& [place, shown] : parts) {
        const double share =
            covered(i * size, right, place.minX(), place.maxX()) * covered(bottom, top, place.minY(), place.maxY());
        code += (shown - code) * share;
    }
    return code;
}

/// A picture scaled by `scale` with its lower left corner at `corner` of the frame, where the unit has its middle.
double scaledAt(const ReferencePlane& from, Point corner, double scale, Point middle, int fromHeight, int c) {
    const double size = from.pixelsPerUnit();
    const double across = (middle.x - corner.x) / scale / size;
    const double down = (fromHeight - (middle.y - corner.y) / scale) / size; // chroma counts from the upper left
    return from.bilinear(across - 0.5, from.height() - down - 0.5, c);
}

void layNameTag(ReferencePicture& frame, const NameTagText& text, const Rect& column) {
    const double height = frame.height;
    const auto tag = NameTag::image(QString::fromStdString(text.name), QString::fromStdString(text.role),
                                    std::round(height * 0.022), column.width - height * 0.03, 1);
    if (!tag) {
        return;
    }
    const FrameRef picture = PixelBuffer::create(PixelFormat::bgra, tag->pixels.width(), tag->pixels.height());
    for (int y = 0; y < picture->height(); ++y) {
        std::memcpy(picture->plane(0).row(y), tag->pixels.constScanLine(y),
                    static_cast<std::size_t>(picture->width()) * 4);
    }
    const double width = picture->width();
    layPicture(frame, *picture,
               {std::round(column.midX() - width * 0.5), std::round(height * 0.035), width,
                static_cast<double>(picture->height())});
}

} // namespace

void layReferenceSurface(ReferencePicture& target, const ReferencePicture& source,
                         const ReferenceScene::Surface& surface, const Rect& screen) {
    const double s = target.width / screen.width;
    const auto inPixels = [&](const Rect& r) {
        return Rect{(r.minX() - screen.minX()) * s, (r.minY() - screen.minY()) * s, r.width * s, r.height * s};
    };
    const BubbleInfo& info = surface.info;
    if (surface.picture && info.window.width > 1) {
        layPicture(target, *surface.picture, inPixels(info.window));
        return;
    }
    pasteBack(target, source, inPixels(info.rect), info.circle, info.corner);
    if (info.label) {
        pasteBack(target, source, inPixels(*info.label), false, 0.5);
    }
}

void placeBesideColumn(ReferencePicture& frame, const ReferenceScene::Column& column) {
    const ReferencePicture picture = frame;
    const double w = frame.width;
    const double h = frame.height;
    const double t = column.slide;
    const double e = t * t * (3 - 2 * t);
    const double cw = std::round(w * 0.2);
    const double k = 1 - cw / w * e;
    const double v = cw * e;
    const Rect shrunk{column.left ? v : 0, (h - k * h) * 0.5, k * w, k * h};
    const Rect place{column.left ? -cw * (1 - e) : w - v, 0, cw, h};
    const auto camera = column.camera ? std::optional(ReferencePicture(*column.camera)) : std::nullopt;
    const double cameraScale = camera ? std::max(cw / camera->width, h / camera->height) : 1;
    const Point cameraCorner =
        camera ? Point{place.midX() - camera->width * cameraScale / 2, place.midY() - camera->height * cameraScale / 2}
               : Point{};
    for (std::size_t p = 0; p < frame.planes.size(); ++p) {
        ReferencePlane& plane = frame.planes[p];
        for (int j = 0; j < plane.height(); ++j) {
            for (int i = 0; i < plane.width(); ++i) {
                const Point middle = plane.middle(i, j);
                for (int c = 0; c < plane.components(); ++c) {
                    const double shown = scaledAt(picture.planes[p], shrunk.origin(), k, middle, frame.height, c);
                    const double beside =
                        camera ? scaledAt(camera->planes[p], cameraCorner, cameraScale, middle, camera->height, c)
                               : plane.codeOf({0.44, 0.66, 0.12, 1}, c);
                    plane.component(i, j, c) = composed(plane.codeOf({0.09, 0.11, 0.04, 1}, c), plane, frame.width,
                                                        frame.height, i, j, {{shrunk, shown}, {place, beside}});
                }
            }
        }
    }
    if (column.nameTag) {
        layNameTag(frame, *column.nameTag, place);
    }
}

} // namespace velmo::test
