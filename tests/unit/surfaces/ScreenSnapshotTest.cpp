#include "surfaces/ScreenSnapshot.h"

#include "support/FakeScreenCapture.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

struct Desk {
    Desk() {
        service.content.displays = {{7, {0, 0, 1920, 1080}, 1920, 1080}, {8, {1920, 0, 1024, 768}, 1024, 768}};
        service.image = [this](const ContentFilter& filter,
                               const StreamConfiguration& configuration) -> Result<FrameRef> {
            filters.push_back(filter);
            configurations.push_back(configuration);
            if (fails) {
                return Error{};
            }
            return PixelBuffer::create(configuration.pixelFormat, configuration.width, configuration.height);
        };
    }
    FrameRef shoot(ScreenSnapshot& snapshot) {
        FrameRef result;
        snapshot.capture([&](FrameRef picture) {
            ++answers;
            result = std::move(picture);
        });
        return result;
    }
    test::FakeScreenCapture service;
    std::vector<ContentFilter> filters;
    std::vector<StreamConfiguration> configurations;
    bool fails = false;
    int answers = 0;
};

TEST(ScreenSnapshot, IsTheDisplayWithoutThisProgramButWithTheBoard) {
    Desk desk;
    const auto snapshot = ScreenSnapshot::create(desk.service, {8, WindowId{55}, 4711});
    const FrameRef picture = desk.shoot(*snapshot);
    ASSERT_TRUE(picture);
    EXPECT_EQ(desk.filters.at(0), ContentFilter::display(8, {4711}, {55}));
    EXPECT_EQ(picture->width(), 640);
    EXPECT_EQ(picture->height(), 480);
    EXPECT_EQ(picture->format(), PixelFormat::bgra);
    EXPECT_FALSE(desk.configurations.at(0).showsCursor);
}

TEST(ScreenSnapshot, WithoutABoardNoWindowOfThisProgramIsInIt) {
    Desk desk;
    desk.shoot(*ScreenSnapshot::create(desk.service, {7, std::nullopt, 4711}));
    EXPECT_EQ(desk.filters.at(0), ContentFilter::display(7, {4711}, {}));
    EXPECT_EQ(desk.configurations.at(0).height, 360);
}

TEST(ScreenSnapshot, OfADisplayThatIsNotThereIsTheFirst) {
    Desk desk;
    desk.shoot(*ScreenSnapshot::create(desk.service, {99, std::nullopt, 1}));
    EXPECT_EQ(desk.filters.at(0).asDisplay()->displayID, 7u);
}

TEST(ScreenSnapshot, AsksForTheContentOnceAndAgainAfterAFailure) {
    Desk desk;
    const auto snapshot = ScreenSnapshot::create(desk.service, {8, std::nullopt, 1});
    desk.shoot(*snapshot);
    desk.service.content.displays.pop_back();
    desk.shoot(*snapshot);
    EXPECT_EQ(desk.filters.back().asDisplay()->displayID, 8u) << "the filter of the first shot";
    desk.fails = true;
    EXPECT_FALSE(desk.shoot(*snapshot));
    desk.fails = false;
    EXPECT_TRUE(desk.shoot(*snapshot));
    EXPECT_EQ(desk.filters.back().asDisplay()->displayID, 7u);
    EXPECT_EQ(desk.answers, 4);
}

TEST(ScreenSnapshot, FailsWithoutAnyDisplayOrContent) {
    Desk desk;
    const auto snapshot = ScreenSnapshot::create(desk.service, {8, std::nullopt, 1});
    desk.service.contentError = Error{};
    EXPECT_FALSE(desk.shoot(*snapshot));
    desk.service.contentError.reset();
    desk.service.content.displays.clear();
    EXPECT_FALSE(desk.shoot(*snapshot));
    EXPECT_EQ(desk.answers, 2);
    EXPECT_TRUE(desk.filters.empty());
}

} // namespace
} // namespace velmo
