#pragma once

#include "compositor/internal/FrameRenderer.h"
#include "support/Pictures.h"
#include "support/ReferenceRenderer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace velmo::test {

/// A window's picture: noise with soft and hard edges of alpha, premultiplied, clear in its corners.
inline FrameRef windowPicture(int width, int height, std::uint32_t seed = 1) {
    const FrameRef picture = makePicture(PixelFormat::bgra, width, height, Content::noise, seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = picture->plane(0).row(y) + 4 * x;
            const bool isCorner =
                (x < width / 4 || x >= width - width / 4) && (y < height / 4 || y >= height - height / 4);
            pixel[3] = isCorner ? 0 : (x + y) % 3 == 0 ? pixel[3] : 255;
            for (int c = 0; c < 3; ++c) {
                pixel[c] = static_cast<std::uint8_t>(pixel[c] * pixel[3] / 255);
            }
        }
    }
    return picture;
}

/// What a frame shows, for the renderer and for the reference alike.
struct Composition {
    internal::CropWindow window;
    internal::Spotlight spotlight;
    std::optional<internal::PointerFigure> pointer; ///< needs a frame whose sheet makes no difference
    Rect screen{0, 0, 1, 1};
    std::vector<internal::LiveBubble> bubbles;
    std::optional<internal::Column> column;

    internal::FrameContents contents() const { return {window, spotlight, pointer, screen, bubbles, column}; }

    ReferenceScene scene() const {
        ReferenceScene scene;
        scene.center = window.center;
        scene.scale = window.scale;
        scene.spot = spotlight.at;
        scene.spotAlpha = spotlight.alpha;
        scene.screen = screen;
        for (const internal::LiveBubble& bubble : bubbles) {
            scene.surfaces.push_back({bubble.info, bubble.picture});
        }
        if (column) {
            const auto tag = column->nameTag ? std::optional(*column->nameTag) : std::nullopt;
            scene.column = {column->slide, column->left, column->camera, tag};
        }
        return scene;
    }
};

inline ::testing::AssertionResult agrees(internal::FrameRenderer& renderer, const FrameRef& source,
                                         const Composition& composition, const std::string& name) {
    const FrameRef actual = renderer.render(*source, composition.contents());
    if (!actual) {
        return ::testing::AssertionFailure() << name << ": no frame";
    }
    return picturesAgree(*actual, *referenceRender(*source, composition.scene()), 1, name)
           << " in " << source->width() << "x" << source->height() << ", scale " << composition.window.scale;
}

/// A picture in which every component is `value`.
inline FrameRef plainPicture(PixelFormat format, int width, int height, std::uint8_t value) {
    const FrameRef picture = makePicture(format, width, height, Content::flat);
    for (int p = 0; p < picture->planeCount(); ++p) {
        const PlaneView plane = picture->plane(p);
        std::fill_n(plane.data, plane.stride * plane.height, value);
    }
    return picture;
}

} // namespace velmo::test
