#include "platform/ffmpeg/internal/EncoderLoad.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace velmo::internal {
namespace {

constexpr double kInterval = 1.0 / 30;
constexpr int kLimit = 8;

/// Frames come at 30 a second and each takes `encodingTime`. How many were lost before the load was called too high,
/// and how many frames that took; -1 when it never was.
struct Course {
    int framesUntilTold = -1;
    int lost = 0;
};

Course run(double encodingTime, double seconds) {
    EncoderLoad load(kInterval, kLimit);
    Course course;
    double freeAt = 0; // when the encoder is done with what it has
    int waiting = 0;
    int encoded = 0;
    for (int arrival = 0; arrival * kInterval < seconds; ++arrival) {
        const double now = arrival * kInterval;
        while (waiting > 0 && freeAt <= now) {
            --waiting;
            ++encoded;
            if (load.isTooHigh(encodingTime, waiting)) {
                course.framesUntilTold = encoded;
                return course;
            }
            freeAt += encodingTime;
        }
        if (waiting == kLimit) {
            ++course.lost;
            continue;
        }
        if (waiting == 0) {
            freeAt = now + encodingTime;
        }
        ++waiting;
    }
    return course;
}

TEST(EncoderLoad, AnEncoderThatKeepsUpIsLeftAlone) {
    for (const double time : {0.001, 0.02, 0.033}) {
        EXPECT_EQ(run(time, 60).framesUntilTold, -1) << time;
    }
}

TEST(EncoderLoad, OneThatIsTooSlowIsToldBeforeAFrameIsLost) {
    for (const double time : {0.035, 0.04, 0.05, 0.06, 0.08, 0.1}) {
        const Course course = run(time, 60);
        EXPECT_GT(course.framesUntilTold, 0) << time;
        EXPECT_EQ(course.lost, 0) << time;
    }
}

TEST(EncoderLoad, OneHeavyPictureIsNoLoad) {
    for (const double time : {0.15, 0.3, 2.0}) {
        EncoderLoad load(kInterval, kLimit);
        for (int i = 0; i < 100; ++i) {
            EXPECT_FALSE(load.isTooHigh(0.01, 0));
        }
        EXPECT_FALSE(load.isTooHigh(time, 7)) << time;
        for (int waiting = 7; waiting > 0; --waiting) {
            EXPECT_FALSE(load.isTooHigh(0.01, waiting)) << time;
        }
    }
}

TEST(EncoderLoad, AfterAChangeItMeasuresAnew) {
    EncoderLoad load(kInterval, kLimit);
    int told = 0;
    for (int i = 0; i < 3; ++i) {
        told += load.isTooHigh(0.1, 6) ? 1 : 0;
    }
    EXPECT_EQ(told, 1);
    for (int i = 0; i < 100; ++i) {
        EXPECT_FALSE(load.isTooHigh(0.02, 6)) << "the easier preset works the queue off";
    }
}

TEST(EncoderLoad, TellsTheAverageThatDecidedAndNotTheLastPicture) {
    EncoderLoad load(kInterval, kLimit);
    EXPECT_FALSE(load.isTooHigh(0.06, 6));
    EXPECT_FALSE(load.isTooHigh(0.06, 6));
    EXPECT_TRUE(load.isTooHigh(0.03, 6));
    EXPECT_NEAR(load.averageTime(), 0.05, 1e-9);
    EXPECT_FALSE(load.isTooHigh(0.01, 6));
    EXPECT_NEAR(load.averageTime(), 0.01, 1e-9) << "measured anew";
}

} // namespace
} // namespace velmo::internal
