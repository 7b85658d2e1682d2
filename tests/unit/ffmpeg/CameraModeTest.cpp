#include "platform/ffmpeg/internal/CameraMode.h"

#include <gmock/gmock.h>

namespace velmo::internal {
namespace {

const CameraMode kVga{"yuyv422", 640, 480, 30};
const CameraMode kSlowHd{"yuyv422", 1280, 720, 10};
const CameraMode kHd{"mjpeg", 1280, 720, 30};
const CameraMode kFullHd{"mjpeg", 1920, 1080, 30};
const CameraMode kUltraHd{"mjpeg", 3840, 2160, 30};

TEST(CameraMode, ATypicalCameraIsUsedAt720LinesAnd30PicturesASecond) {
    EXPECT_EQ(bestMode({kVga, kSlowHd, kFullHd, kHd, kUltraHd}), kHd);
}

TEST(CameraMode, FluidGoesBeforeLarge) {
    EXPECT_EQ(bestMode({kSlowHd, kVga}), kVga);
}

TEST(CameraMode, OfSlowModesTheFastestIsTaken) {
    const CameraMode slower{"yuyv422", 1920, 1080, 5};
    EXPECT_EQ(bestMode({slower, kSlowHd}), kSlowHd);
}

TEST(CameraMode, FullHdGoesBeforeVgaAndVgaBeforeUltraHd) {
    EXPECT_EQ(bestMode({kVga, kFullHd}), kFullHd);
    EXPECT_EQ(bestMode({kUltraHd, kVga}), kVga);
    EXPECT_EQ(bestMode({kUltraHd}), kUltraHd);
}

TEST(CameraMode, ThirtyGoesBeforeSixty) {
    const CameraMode fast{"nv12", 1280, 720, 60};
    EXPECT_EQ(bestMode({fast, kHd}), kHd);
}

TEST(CameraMode, OfEqualModesTheOneThatNeedsNoDecodingIsTaken) {
    const CameraMode raw{"yuyv422", 1280, 720, 30};
    const CameraMode ready{"nv12", 1280, 720, 30};
    EXPECT_EQ(bestMode({kHd, raw, ready}), ready);
    EXPECT_EQ(bestMode({kHd, raw}), raw);
}

TEST(CameraMode, AWidePictureGoesBeforeANarrowOneOfTheSameHeight) {
    const CameraMode narrow{"yuyv422", 960, 720, 30};
    EXPECT_EQ(bestMode({narrow, kHd}), kHd);
}

TEST(CameraMode, ThereMayBeNone) {
    EXPECT_EQ(bestMode({}), std::nullopt);
}

} // namespace
} // namespace velmo::internal
