#include "platform/x11/internal/FramePacer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace velmo::x11 {
namespace {

constexpr std::int64_t kMillisecond = 1'000'000;
constexpr std::int64_t kInterval = 33'333'333;

/// Paints at the given times and takes a picture whenever one is due; returns the index of the last painting in each.
struct Recording {
    std::vector<std::size_t> pictures;
    std::vector<std::int64_t> times;
};

Recording record(const std::vector<std::int64_t>& paintings, std::int64_t interval = kInterval) {
    FramePacer pacer(interval);
    Recording recording;
    const auto take = [&](std::int64_t until, std::size_t last) {
        while (pacer.due() && *pacer.due() < until) {
            const std::int64_t time = *pacer.due();
            pacer.delivered(time);
            recording.pictures.push_back(last);
            recording.times.push_back(time);
        }
    };
    for (std::size_t i = 0; i < paintings.size(); ++i) {
        take(paintings[i], i - 1);
        pacer.damaged(paintings[i]);
    }
    take(paintings.back() + 10 * interval, paintings.size() - 1);
    return recording;
}

std::vector<std::int64_t> painted(int count, double perSecond, std::int64_t jitter, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::vector<std::int64_t> times;
    for (int i = 0; i < count; ++i) {
        const std::int64_t late = jitter == 0 ? 0 : static_cast<std::int64_t>(random() % static_cast<unsigned>(jitter));
        times.push_back(1'000'000'000 + static_cast<std::int64_t>(i * 1e9 / perSecond) + late);
    }
    return times;
}

std::vector<std::size_t> each(std::size_t count) {
    std::vector<std::size_t> all(count);
    for (std::size_t i = 0; i < count; ++i) {
        all[i] = i;
    }
    return all;
}

TEST(FramePacer, NothingIsDueWhileNothingIsPainted) {
    EXPECT_FALSE(FramePacer(kInterval).due());
}

TEST(FramePacer, TheFirstPaintingAfterAPauseIsTakenAsSoonAsItSettled) {
    FramePacer pacer(kInterval);
    pacer.damaged(500 * kMillisecond);
    pacer.damaged(501 * kMillisecond);
    EXPECT_EQ(pacer.due(), 500 * kMillisecond + FramePacer::kSettleTime);
}

TEST(FramePacer, EachPaintingAtTheCaptureRateIsTakenOnceInAMinute) {
    EXPECT_EQ(record(painted(1800, 30, 0)).pictures, each(1800));
}

TEST(FramePacer, EachPaintingIsTakenThoughThePainterIsLateNowAndThen) {
    for (unsigned seed = 1; seed < 20; ++seed) {
        EXPECT_EQ(record(painted(1800, 30, 24 * kMillisecond, seed)).pictures, each(1800)) << seed;
    }
}

/// Uses up a pacer's credit by paintings without end; the time of the last picture.
std::int64_t spendCredit(FramePacer& pacer) {
    std::int64_t time = 1000 * kMillisecond;
    for (int i = 0; i < 20; ++i) {
        pacer.damaged(time + kMillisecond);
        time = *pacer.due();
        pacer.delivered(time);
    }
    return time;
}

TEST(FramePacer, WithoutCreditAPainterOfTheRateLosesOnePaintingAtMost) {
    for (std::int64_t phase = kMillisecond; phase < kInterval; phase += kMillisecond) {
        FramePacer pacer(kInterval);
        const std::int64_t begin = spendCredit(pacer) + phase;
        std::mt19937 random(1);
        int lost = 0;
        for (int i = 0; i < 300; ++i) {
            const std::int64_t painting =
                begin + i * kInterval + static_cast<std::int64_t>(random() % (6 * kMillisecond));
            const bool oneWaits = pacer.due().has_value() && *pacer.due() >= painting;
            if (pacer.due() && !oneWaits) {
                pacer.delivered(*pacer.due());
            }
            lost += oneWaits ? 1 : 0;
            pacer.damaged(painting);
        }
        EXPECT_LE(lost, 1) << "painted " << phase << " ns after a picture";
    }
}

TEST(FramePacer, ASlowPainterDoesNotBeatAgainstTheRate) {
    for (const double rate : {29.97, 29.0, 25.0, 24.0, 15.0}) {
        EXPECT_EQ(record(painted(600, rate, 3 * kMillisecond)).pictures, each(600)) << rate;
    }
}

TEST(FramePacer, OfTwiceTheRateEverySecondPaintingIsTaken) {
    const auto pictures = record(painted(1200, 60, kMillisecond)).pictures;
    int uneven = 0;
    for (std::size_t i = 10; i < pictures.size(); ++i) {
        uneven += pictures[i] - pictures[i - 1] != 2;
    }
    EXPECT_LE(uneven, 2);
}

/// As `record`, with a mouse that is moved every `moveEvery`; a pointer is only ever part of the last picture.
Recording recordUnderPointer(const std::vector<std::int64_t>& paintings, std::int64_t moveEvery) {
    FramePacer pacer(kInterval);
    Recording recording;
    std::size_t next = 0;
    for (std::int64_t time = paintings.front(); time < paintings.back() + kInterval; time += kMillisecond / 2) {
        for (; next < paintings.size() && paintings[next] <= time; ++next) {
            pacer.damaged(paintings[next]);
        }
        if (time / moveEvery != (time - kMillisecond / 2) / moveEvery) {
            pacer.pointerMoved(time);
        }
        if (pacer.due() && *pacer.due() <= time) {
            pacer.delivered(time);
            recording.pictures.push_back(next - 1);
            recording.times.push_back(time);
        }
    }
    return recording;
}

TEST(FramePacer, AMovingPointerTakesNoPaintingsPlace) {
    for (unsigned seed = 1; seed < 10; ++seed) {
        for (const double rate : {30.0, 29.97, 25.0}) {
            for (const std::int64_t moveEvery : {1, 8, 12, 16}) {
                const auto paintings = painted(1800, rate, 6 * kMillisecond, seed);
                auto pictures = recordUnderPointer(paintings, moveEvery * kMillisecond).pictures;
                pictures.erase(std::unique(pictures.begin(), pictures.end()), pictures.end());
                EXPECT_EQ(pictures, each(1800)) << rate << " a second, moved every " << moveEvery << " ms, " << seed;
            }
        }
    }
}

TEST(FramePacer, AMovingPointerTakesNoPaintingsPlaceThoughThePainterIsOftenLate) {
    for (unsigned seed = 1; seed < 20; ++seed) {
        auto pictures = recordUnderPointer(painted(1800, 30, 20 * kMillisecond, seed), 12 * kMillisecond).pictures;
        pictures.erase(std::unique(pictures.begin(), pictures.end()), pictures.end());
        EXPECT_EQ(pictures, each(1800)) << seed;
    }
}

TEST(FramePacer, APointerOverAStillScreenIsShownAtTheFullRate) {
    FramePacer pacer(kInterval);
    int pictures = 0;
    for (std::int64_t time = 0; time < 10'000 * kMillisecond; time += kMillisecond) {
        pacer.pointerMoved(time);
        if (*pacer.due() <= time) {
            pacer.delivered(time);
            ++pictures;
        }
    }
    EXPECT_GE(pictures, 290);
}

TEST(FramePacer, APointerWaitsForThePainterALittleAndOnlyOnce) {
    FramePacer pacer(kInterval);
    pacer.damaged(1000 * kMillisecond);
    pacer.delivered(1002 * kMillisecond);
    pacer.pointerMoved(1003 * kMillisecond);
    EXPECT_TRUE(pacer.waitsForPainting());
    const std::int64_t due = *pacer.due();
    EXPECT_GT(due, 1002 * kMillisecond + kInterval);
    EXPECT_LT(due, 1002 * kMillisecond + 3 * kInterval / 2);
    pacer.delivered(due);
    pacer.pointerMoved(due + 20 * kMillisecond);
    EXPECT_FALSE(pacer.waitsForPainting());
    EXPECT_EQ(pacer.due(), due + kInterval);
}

TEST(FramePacer, APaintingDoesNotWaitForThePointersTime) {
    FramePacer pacer(kInterval);
    pacer.damaged(1000 * kMillisecond);
    pacer.delivered(1002 * kMillisecond);
    pacer.pointerMoved(1003 * kMillisecond);
    pacer.damaged(1032 * kMillisecond);
    EXPECT_FALSE(pacer.waitsForPainting());
    EXPECT_EQ(pacer.due(), 1032 * kMillisecond + FramePacer::kSettleTime);
}

TEST(FramePacer, NeverMorePicturesThanTheRateAndTheSavedCredit) {
    for (const double rate : {31.0, 47.0, 60.0, 144.0, 1000.0}) {
        const auto times = record(painted(4000, rate, 5 * kMillisecond)).times;
        for (std::size_t i = 30; i < times.size(); ++i) {
            const double allowed = static_cast<double>(times[i] - times[i - 30]) / kInterval + FramePacer::kMaxCredit;
            ASSERT_LE(30, allowed + 1) << rate;
        }
    }
}

TEST(FramePacer, PicturesKeepApart) {
    const auto times = record(painted(4000, 1000, 0)).times;
    for (std::size_t i = 1; i < times.size(); ++i) {
        ASSERT_GE(times[i] - times[i - 1], kInterval * 3 / 10);
    }
}

TEST(FramePacer, WhatIsPaintedLastIsAlwaysTaken) {
    EXPECT_EQ(record(painted(1000, 500, kMillisecond)).pictures.back(), 999u);
}

TEST(FramePacer, APaintingNobodySeesCostsNothing) {
    FramePacer pacer(kInterval);
    for (int i = 0; i < 100; ++i) {
        pacer.damaged(i * kMillisecond);
        pacer.dismissed();
    }
    EXPECT_FALSE(pacer.due());
    pacer.damaged(200 * kMillisecond);
    EXPECT_EQ(pacer.due(), 200 * kMillisecond + FramePacer::kSettleTime);
}

TEST(FramePacer, APaintingThatWasNoneLeavesThePointerItsTime) {
    FramePacer pacer(kInterval);
    pacer.damaged(1000 * kMillisecond);
    pacer.delivered(1002 * kMillisecond);
    pacer.pointerMoved(1003 * kMillisecond);
    const auto forThePointer = pacer.due();
    pacer.damaged(1010 * kMillisecond);
    EXPECT_LT(pacer.due(), forThePointer);
    pacer.paintedNothing();
    EXPECT_EQ(pacer.due(), forThePointer);
}

TEST(FramePacer, ADemandedPictureIsDueAtOnce) {
    FramePacer pacer(kInterval);
    pacer.damaged(1000 * kMillisecond);
    pacer.delivered(1002 * kMillisecond);
    pacer.demand(1003 * kMillisecond);
    EXPECT_EQ(pacer.due(), 1003 * kMillisecond);
}

} // namespace
} // namespace velmo::x11
