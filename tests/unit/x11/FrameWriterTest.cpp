#include "platform/x11/internal/FrameWriter.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace velmo::x11 {
namespace {

struct Screen {
    Screen(int width, int height)
        : pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4), picture{
                                                                                              pixels.data(),
                                                                                              std::ptrdiff_t{4} * width,
                                                                                              width, height, false} {}
    void paint(FrameWriter& writer, const PixelRect& rect, std::uint8_t value) {
        for (int y = rect.y; y < rect.bottom(); ++y) {
            for (int x = rect.x; x < rect.right(); ++x) {
                std::fill_n(picture.at(x, y), 3, value);
            }
        }
        writer.invalidate(Region(rect));
    }
    std::vector<std::uint8_t> pixels;
    Picture picture;
};

std::unique_ptr<FrameWriter> writerFor(const FrameFormat& format, const Screen& screen) {
    auto writer = FrameWriter::create(format);
    writer->setSource(screen.picture.width, screen.picture.height);
    return writer;
}

bool shows(const PixelBuffer& frame, const Picture& picture) {
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            if (frame.plane(0).row(y)[4 * x] != picture.at(x, y)[0]) {
                return false;
            }
        }
    }
    return true;
}

TEST(FrameWriter, AHeldFrameStaysAsItWas) {
    Screen screen(8, 8);
    const auto writer = writerFor({PixelFormat::bgra, 8, 8, 3}, screen);
    screen.paint(*writer, {0, 0, 8, 8}, 10);
    const FrameRef first = writer->write(screen.picture);
    screen.paint(*writer, {2, 2, 2, 2}, 20);
    const FrameRef second = writer->write(screen.picture);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->plane(0).row(2)[8], 10);
    EXPECT_EQ(second->plane(0).row(2)[8], 20);
}

TEST(FrameWriter, GivesNothingWhileAllAreHeldAndEverythingAfter) {
    Screen screen(8, 8);
    const auto writer = writerFor({PixelFormat::bgra, 8, 8, 2}, screen);
    FrameRef first = writer->write(screen.picture);
    const FrameRef second = writer->write(screen.picture);
    EXPECT_FALSE(writer->hasFreeBuffer());
    EXPECT_FALSE(writer->write(screen.picture));
    screen.paint(*writer, {4, 4, 2, 2}, 30);
    first = nullptr;
    ASSERT_TRUE(writer->hasFreeBuffer());
    EXPECT_TRUE(shows(*writer->write(screen.picture), screen.picture));
}

TEST(FrameWriter, EveryFrameIsTheWholePictureHoweverTheBuffersComeBack) {
    std::mt19937 random(5);
    Screen screen(64, 48);
    const auto writer = writerFor({PixelFormat::bgra, 64, 48, 4}, screen);
    std::vector<FrameRef> held;
    for (int round = 0; round < 500; ++round) {
        screen.paint(*writer,
                     {static_cast<int>(random() % 60), static_cast<int>(random() % 44),
                      1 + static_cast<int>(random() % 4), 1 + static_cast<int>(random() % 4)},
                     static_cast<std::uint8_t>(random()));
        if (FrameRef frame = writer->write(screen.picture)) {
            ASSERT_TRUE(shows(*frame, screen.picture));
            held.push_back(std::move(frame));
        }
        while (!held.empty() && random() % 2 == 0) {
            held.erase(held.begin() + static_cast<std::ptrdiff_t>(random() % held.size()));
        }
    }
}

TEST(FrameWriter, ASourceOnePixelLargerIsCutAndNotScaled) {
    Screen screen(9, 9);
    const auto writer = writerFor({PixelFormat::bgra, 8, 8, 2}, screen);
    std::mt19937 random(6);
    for (auto& byte : screen.pixels) {
        byte = static_cast<std::uint8_t>(random());
    }
    EXPECT_TRUE(shows(*writer->write(screen.picture), screen.picture));
}

TEST(FrameWriter, AnotherSourceSizeIsScaledIntoTheSameFrame) {
    Screen screen(8, 8);
    const auto writer = writerFor({PixelFormat::bgra, 8, 8, 2}, screen);
    screen.paint(*writer, {0, 0, 8, 8}, 10);
    EXPECT_EQ(writer->write(screen.picture)->plane(0).row(7)[28], 10);
    Screen larger(16, 20);
    writer->setSource(16, 20);
    larger.paint(*writer, {0, 0, 16, 20}, 90);
    const FrameRef frame = writer->write(larger.picture);
    EXPECT_EQ(frame->width(), 8);
    EXPECT_EQ(frame->plane(0).row(7)[28], 90);
}

TEST(FrameWriter, ImpossibleSizesGiveNoWriter) {
    EXPECT_EQ(FrameWriter::create({PixelFormat::nv12, 0, 10, 2}), nullptr);
}

} // namespace
} // namespace velmo::x11
