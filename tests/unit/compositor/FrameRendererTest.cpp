#include "compositor/internal/FrameRenderer.h"

#include "support/Pictures.h"
#include "support/ReferenceRenderer.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>

namespace velmo {
namespace {

using internal::CropWindow;
using internal::FrameRenderer;
using test::Content;
using test::makePicture;
using test::picturesAgree;

constexpr PixelFormat kFormats[] = {PixelFormat::nv12, PixelFormat::bgra};
constexpr Content kContents[] = {Content::noise, Content::blackAndWhite, Content::gradient, Content::flat};

FrameRenderer makeRenderer() {
    return FrameRenderer(&PixelBufferPool::create);
}

void expectAgreement(FrameRenderer& renderer, const FrameRef& source, const CropWindow& window,
                     const std::string& name) {
    const FrameRef actual = renderer.render(*source, {window, {}, {}});
    ASSERT_TRUE(actual);
    const FrameRef expected = test::referenceRender(*source, window.center, window.scale);
    ASSERT_TRUE(picturesAgree(*actual, *expected, 1, name))
        << "centre " << window.center.x << ", " << window.center.y << ", scale " << window.scale << ", size "
        << source->width() << "x" << source->height();
}

class FrameRendererProperty : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(FrameRendererProperty, AgreesWithTheReferenceOverRandomWindowsSizesAndContents) {
    std::mt19937 random(GetParam());
    const auto within = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    FrameRenderer renderer = makeRenderer();
    for (int i = 0; i < 60; ++i) {
        const auto width = static_cast<int>(within(1, i % 4 == 0 ? 20 : 300));
        const auto height = static_cast<int>(within(1, i % 4 == 1 ? 20 : 200));
        const FrameRef source = makePicture(kFormats[random() % 2], width, height, kContents[random() % 4], random());
        for (int k = 0; k < 4; ++k) {
            const double scale = k == 0 ? within(1, 1.2) : within(1, 20);
            const CropWindow window{{within(-0.1, 1.1), within(-0.1, 1.1)}, scale};
            ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, window, "random-crop"));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FrameRendererProperty, ::testing::Range(1u, 7u));

TEST(FrameRenderer, AgreesWithTheReferenceForEveryTinySize) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        for (int width = 1; width <= 9; ++width) {
            for (int height = 1; height <= 5; ++height) {
                const FrameRef source = makePicture(format, width, height, Content::noise, 7);
                ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, {{0.5, 0.5}, 2}, "tiny"));
                ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, {{0.31, 0.64}, 1.003}, "tiny-unzoomed"));
                ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, {{0.97, 0.02}, 20}, "tiny-corner"));
            }
        }
    }
}

TEST(FrameRenderer, AgreesWithTheReferenceAtFullSizes) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef large = makePicture(PixelFormat::nv12, 3840, 2160, Content::noise);
    expectAgreement(renderer, large, {{0.613, 0.377}, 2.37}, "3840x2160");
    const FrameRef usual = makePicture(PixelFormat::nv12, 1920, 1080, Content::blackAndWhite);
    expectAgreement(renderer, usual, {{0.75, 0.25}, 2}, "1920x1080");
    expectAgreement(renderer, usual, {{0.5, 0.5}, 1.0021}, "1920x1080-nearly-whole");
    const FrameRef odd = makePicture(PixelFormat::bgra, 1367, 769, Content::noise);
    expectAgreement(renderer, odd, {{0.2, 0.8}, 5.999}, "1367x769");
}

TEST(FrameRenderer, AWindowFarOutsideShowsTheEdge) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 50, 40, Content::noise);
    for (const Point center : {Point{-1e6, 0.5}, Point{1e6, 1e6}, Point{0.5, -40}, Point{-0.5, 1.5}}) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, {center, 2}, "far-outside"));
    }
}

TEST(FrameRenderer, AScaleBelowOneCountsAsOne) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 50, 40, Content::noise);
    for (const double scale : {0.5, 0.0, -3.0}) {
        EXPECT_TRUE(
            picturesAgree(*renderer.render(*source, {{{0.5, 0.5}, scale}, {}, {}}), *source, 0, "scale-below-one"));
    }
}

TEST(FrameRenderer, TheWholeScreenIsCopiedExactlyAndAFlatOneStaysFlat) {
    FrameRenderer renderer = makeRenderer();
    for (const PixelFormat format : kFormats) {
        const FrameRef source = makePicture(format, 77, 33, Content::noise);
        EXPECT_TRUE(picturesAgree(*renderer.render(*source, {}), *source, 0, "whole-screen"));
        const FrameRef flat = makePicture(format, 77, 33, Content::flat, 99);
        EXPECT_TRUE(picturesAgree(*renderer.render(*flat, {{{0.4, 0.7}, 3.3}, {}, {}}), *flat, 0, "flat"));
    }
}

TEST(FrameRenderer, TheWindowMovesWithItsOwnSteps) {
    FrameRenderer renderer = makeRenderer();
    const FrameRef source = makePicture(PixelFormat::nv12, 128, 96, Content::gradient);
    renderer.render(*source, {{{0.5, 0.5}, 2}, {}, {}});
    for (const CropWindow& window : {CropWindow{{0.5, 0.6}, 2}, CropWindow{{0.4, 0.6}, 2}, CropWindow{{0.4, 0.6}, 1},
                                     CropWindow{{0.5, 0.5}, 1}, CropWindow{{0.5, 0.5}, 2}}) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, window, "moved-window"));
    }
}

TEST(FrameRenderer, ANewPictureInTheSameWindowIsShown) {
    FrameRenderer renderer = makeRenderer();
    const CropWindow window{{0.3, 0.3}, 2.5};
    for (std::uint32_t seed = 1; seed < 4; ++seed) {
        const FrameRef source = makePicture(PixelFormat::nv12, 128, 96, Content::noise, seed);
        ASSERT_NO_FATAL_FAILURE(expectAgreement(renderer, source, window, "new-picture"));
    }
}

TEST(PictureComparison, SeesASingleWrongComponentAndLeavesThePictures) {
    const FrameRef one = makePicture(PixelFormat::nv12, 20, 10, Content::noise);
    const FrameRef other = makePicture(PixelFormat::nv12, 20, 10, Content::noise);
    EXPECT_TRUE(picturesAgree(*one, *other, 0, "comparison-check"));
    std::uint8_t& component = other->plane(1).row(3)[5];
    component = static_cast<std::uint8_t>(component ^ 2);
    EXPECT_FALSE(picturesAgree(*one, *other, 1, "comparison-check"));
    EXPECT_TRUE(picturesAgree(*one, *other, 2, "comparison-check"));
    for (const char* part : {"actual", "expected", "difference"}) {
        const std::string path = test::pictureFolder() + "/comparison-check-" + part + ".png";
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
        std::filesystem::remove(path);
    }
}

} // namespace
} // namespace velmo
