#pragma once

#include "base/Geometry.h"
#include "media/PixelBuffer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace velmo::test {

/// Blue, green, red, alpha from 0 to 1.
using ReferenceColor = std::array<double, 4>;

/// A plane of code values that are not rounded, in image space: unit (0, 0) is at the lower left.
class ReferencePlane {
public:
    ReferencePlane(const PixelBuffer& picture, int index)
        : isBgra_(picture.format() == PixelFormat::bgra), isChroma_(index == 1), width_(picture.plane(index).width),
          height_(picture.plane(index).height), pictureHeight_(picture.height()) {
        codes_.reserve(static_cast<std::size_t>(width_ * height_ * components()));
        for (int y = height_ - 1; y >= 0; --y) {
            const std::uint8_t* row = picture.plane(index).row(y);
            codes_.insert(codes_.end(), row, row + width_ * components());
        }
    }

    int width() const { return width_; }
    int height() const { return height_; }
    bool isBgra() const { return isBgra_; }
    bool isChroma() const { return isChroma_; }
    int components() const { return isBgra_ ? 4 : isChroma_ ? 2 : 1; }
    int pixelsPerUnit() const { return isChroma_ ? 2 : 1; }
    double black() const { return isBgra_ ? 0 : isChroma_ ? 128 : 16; }

    double& component(int x, int y, int c) { return codes_[indexOf(x, y, c)]; }
    double component(int x, int y, int c) const { return codes_[indexOf(x, y, c)]; }

    /// The middle of a unit in pixels of the picture. Chroma covers two by two, counted from the upper left.
    Point middle(int x, int y) const {
        const int size = pixelsPerUnit();
        return {(x + 0.5) * size, pictureHeight_ - (height_ - 1 - y + 0.5) * size};
    }

    /// What a premultiplied colour adds to a component.
    double codeOf(const ReferenceColor& color, int c) const {
        const auto [blue, green, red, alpha] = color;
        if (isBgra_) {
            return 255 * color[static_cast<std::size_t>(c)];
        }
        const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
        if (!isChroma_) {
            return 16 * alpha + 219 * luma;
        }
        return 128 * alpha + 224 * (c == 0 ? (blue - luma) / 1.8556 : (red - luma) / 1.5748);
    }

    double bilinear(double x, double y, int c) const {
        const double xIn = std::clamp(x, 0.0, width_ - 1.0);
        const double yIn = std::clamp(y, 0.0, height_ - 1.0);
        const int left = static_cast<int>(std::floor(xIn));
        const int bottom = static_cast<int>(std::floor(yIn));
        const int right = std::min(left + 1, width_ - 1);
        const int top = std::min(bottom + 1, height_ - 1);
        const double across = xIn - left;
        const double up = yIn - bottom;
        return (1 - up) * ((1 - across) * component(left, bottom, c) + across * component(right, bottom, c)) +
               up * ((1 - across) * component(left, top, c) + across * component(right, top, c));
    }

    void roundInto(const PlaneView& plane) const {
        for (int y = 0; y < height_; ++y) {
            for (int i = 0; i < width_ * components(); ++i) {
                const double code = codes_[indexOf(0, height_ - 1 - y, i)];
                plane.row(y)[i] = static_cast<std::uint8_t>(std::clamp(std::floor(code + 0.5), 0.0, 255.0));
            }
        }
    }

private:
    std::size_t indexOf(int x, int y, int c) const {
        return static_cast<std::size_t>((y * width_ + x) * components() + c);
    }

    bool isBgra_;
    bool isChroma_;
    int width_;
    int height_;
    int pictureHeight_;
    std::vector<double> codes_;
};

/// All planes of a picture, until they are rounded once.
struct ReferencePicture {
    explicit ReferencePicture(const PixelBuffer& picture)
        : format(picture.format()), width(picture.width()), height(picture.height()), tags(picture.colorTags()) {
        for (int p = 0; p < picture.planeCount(); ++p) {
            planes.emplace_back(picture, p);
        }
    }

    FrameRef rounded() const {
        FrameRef picture = PixelBuffer::create(format, width, height);
        picture->setColorTags(tags);
        for (int p = 0; p < picture->planeCount(); ++p) {
            planes[static_cast<std::size_t>(p)].roundInto(picture->plane(p));
        }
        return picture;
    }

    PixelFormat format;
    int width;
    int height;
    ColorTags tags;
    std::vector<ReferencePlane> planes;
};

} // namespace velmo::test
