#include "session/CaptureTarget.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace velmo {
namespace {

constexpr int kOwn = 77;

CaptureWindow ownWindow(WindowId id) {
    return {id, {0, 0, 220, 220}, kOwn, ""};
}

struct CaptureTarget : testing::Test {
    CaptureTarget() {
        content.displays = {{1, {0, 0, 1920, 1080}, 1920, 1080}, {2, {1920, 0, 1440, 900}, 1440, 900}};
        content.applications = {{kOwn, "velmo"}};
        own.bubble = 10;
        own.secondBubble = 11;
        own.phone = 12;
        own.drawing = 13;
        own.presenter = 15;
    }
    Result<CapturePlan> plan() {
        return planCapture(wish, own, content, [this](const ContentFilter&) { return scale; });
    }

    CaptureWish wish{RecordMode::screenCam, 1, VideoQuality::retina, kOwn};
    OwnWindows own;
    ShareableContent content;
    double scale = 1;
};

TEST_F(CaptureTarget, TheProgramIsOutOfThePictureButForItsSurfaces) {
    content.windows = {ownWindow(13), ownWindow(15), ownWindow(99), {13, {}, 5, "of another"}, {7, {}, 5, "slides"}};
    const Result<CapturePlan> made = plan();
    ASSERT_TRUE(made.ok());
    const auto& display = *made.value().filter.asDisplay();
    EXPECT_EQ(display.displayID, 1u);
    EXPECT_THAT(display.excludedProcessIDs, ElementsAre(kOwn));
    EXPECT_THAT(display.exceptedWindowIDs, ElementsAre(13, 15));
}

TEST_F(CaptureTarget, ListedBubblesAreOverlaysAndNotInThePicture) {
    content.windows = {ownWindow(12), ownWindow(10)};
    const Result<CapturePlan> made = plan();
    ASSERT_TRUE(made.ok());
    EXPECT_EQ(made.value().overlayWindows.size(), 2u);
    EXPECT_EQ(made.value().overlayWindows.at(kBubbleKey).windowID, 10u);
    EXPECT_EQ(made.value().overlayWindows.at(kPhoneKey).windowID, 12u);
    EXPECT_TRUE(made.value().filter.asDisplay()->exceptedWindowIDs.empty());
}

TEST_F(CaptureTarget, AnUnlistedBubbleIsNeitherOverlayNorFailure) {
    const Result<CapturePlan> made = plan();
    ASSERT_TRUE(made.ok());
    EXPECT_TRUE(made.value().overlayWindows.empty());
}

TEST_F(CaptureTarget, AnUnlistedDisplayIsTheFirst) {
    wish.displayID = 9;
    EXPECT_EQ(plan().value().filter.asDisplay()->displayID, 1u);
}

TEST_F(CaptureTarget, NoDisplayIsNoSource) {
    content.displays.clear();
    const Result<CapturePlan> made = plan();
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().text, "No se encontró la pantalla.");
}

TEST_F(CaptureTarget, TheSizeFollowsTheQuality) {
    wish.displayID = 2;
    scale = 2;
    EXPECT_EQ(plan().value().size, (Size{2880, 1800}));
    wish.quality = VideoQuality::fullHD;
    EXPECT_EQ(plan().value().size, (Size{1920, 1200}));
}

TEST_F(CaptureTarget, TheCameraModeShowsTheBubbleAlone) {
    wish.mode = RecordMode::cam;
    scale = 1.5;
    content.windows = {ownWindow(11), {10, {5, 5, 301, 201}, kOwn, ""}};
    const Result<CapturePlan> made = plan();
    ASSERT_TRUE(made.ok());
    EXPECT_EQ(made.value().filter.asWindow(), 10u);
    EXPECT_EQ(made.value().size, (Size{450, 300}));
    EXPECT_TRUE(made.value().overlayWindows.empty());
}

TEST_F(CaptureTarget, TheCameraModeNeedsTheBubblesWindow) {
    wish.mode = RecordMode::cam;
    EXPECT_EQ(plan().error().text, "No se encontró la ventana de la cámara.");
    content.windows = {ownWindow(11)};
    EXPECT_EQ(plan().error().text, "No se encontró la ventana de la cámara.");
    own.bubble.reset();
    EXPECT_FALSE(plan().ok());
}

TEST(Even, CutsAndGoesTowardsZero) {
    EXPECT_EQ(even({1921, 1081}), (Size{1920, 1080}));
    EXPECT_EQ(even({1921.9, 1081.9}), (Size{1920, 1080}));
    EXPECT_EQ(even({-3.5, 0.9}), (Size{-2, 0}));
}

} // namespace
} // namespace velmo
