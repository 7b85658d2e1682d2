#include "surfaces/PresenterState.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace velmo {
namespace {

using Phase = PresenterState::Phase;
using Bubble = PresenterState::Bubble;
using Entrance = PresenterState::Entrance;
using Departure = PresenterState::Departure;

PresenterState in(Phase phase) {
    PresenterState state;
    if (phase == Phase::rest) {
        return state;
    }
    state.enter(PresenterStyle::framed, Bubble::there);
    if (phase == Phase::entering) {
        return state;
    }
    state.landed();
    if (phase == Phase::leaving) {
        state.exit(Bubble::there);
    }
    return state;
}

constexpr Phase kPhases[] = {Phase::rest, Phase::entering, Phase::shown, Phase::leaving};

TEST(PresenterState, EachRequestInEachPhaseDoesWhatTheTableSays) {
    struct Row {
        Phase from;
        Phase afterEnter;
        Phase afterEnterWithoutBubble;
        Phase afterExit;
        Phase afterLanding;
    };
    constexpr Row kTable[] = {
        {Phase::rest, Phase::entering, Phase::rest, Phase::rest, Phase::rest},
        {Phase::entering, Phase::entering, Phase::entering, Phase::entering, Phase::shown},
        {Phase::shown, Phase::shown, Phase::shown, Phase::leaving, Phase::shown},
        {Phase::leaving, Phase::leaving, Phase::leaving, Phase::leaving, Phase::rest},
    };
    for (const Row& row : kTable) {
        SCOPED_TRACE(static_cast<int>(row.from));
        PresenterState state = in(row.from);
        ASSERT_EQ(state.phase(), row.from);
        EXPECT_EQ(state.enter(PresenterStyle::full, Bubble::there),
                  row.from == Phase::rest ? Entrance::flight : Entrance::dropped);
        EXPECT_EQ(state.phase(), row.afterEnter);
        state = in(row.from);
        EXPECT_EQ(state.enter(PresenterStyle::full, Bubble::gone), Entrance::dropped);
        EXPECT_EQ(state.phase(), row.afterEnterWithoutBubble);
        for (const Bubble bubble : {Bubble::there, Bubble::gone}) {
            state = in(row.from);
            const Departure leaves = bubble == Bubble::there ? Departure::flight : Departure::fade;
            EXPECT_EQ(state.exit(bubble), row.from == Phase::shown ? leaves : Departure::dropped);
            EXPECT_EQ(state.phase(), row.afterExit);
        }
        state = in(row.from);
        state.landed();
        EXPECT_EQ(state.phase(), row.afterLanding);
        state = in(row.from);
        state.reset();
        EXPECT_EQ(state.phase(), Phase::rest);
    }
}

TEST(PresenterState, IsFullOnTheWayInAndOnTheStageAndBusyInFlights) {
    EXPECT_FALSE(in(Phase::rest).isFull());
    EXPECT_TRUE(in(Phase::entering).isFull());
    EXPECT_TRUE(in(Phase::shown).isFull());
    EXPECT_FALSE(in(Phase::leaving).isFull());
    EXPECT_FALSE(in(Phase::rest).isBusy());
    EXPECT_TRUE(in(Phase::entering).isBusy());
    EXPECT_FALSE(in(Phase::shown).isBusy());
    EXPECT_TRUE(in(Phase::leaving).isBusy());
}

TEST(PresenterState, KeepsTheStyleOfADroppedRequest) {
    for (const Phase phase : kPhases) {
        PresenterState state = in(phase);
        state.enter(PresenterStyle::sideLeft, Bubble::gone);
        EXPECT_EQ(state.style(), PresenterStyle::sideLeft);
    }
}

TEST(PresenterState, AnyRowOfRequestsEndsAtRestOrOnTheStageOnceItHasLanded) {
    std::mt19937 random(7);
    for (int sequence = 0; sequence < 2000; ++sequence) {
        PresenterState state;
        int flights = 0; // each begins from a standstill, so there is never more than one
        for (int step = 0; step < 40; ++step) {
            const Bubble bubble = random() % 4 == 0 ? Bubble::gone : Bubble::there;
            const bool wasBusy = state.isBusy();
            bool begins = false;
            switch (random() % 4) {
            case 0:
                begins = state.enter(PresenterStyle::framed, bubble) != Entrance::dropped;
                break;
            case 1:
                begins = state.exit(bubble) != Departure::dropped;
                break;
            case 2:
                state.landed();
                flights = 0;
                break;
            default:
                if (random() % 8 == 0) {
                    state.reset();
                    flights = 0;
                }
            }
            flights += begins ? 1 : 0;
            ASSERT_FALSE(begins && wasBusy);
            ASSERT_LE(flights, 1);
            ASSERT_EQ(state.isBusy(), flights == 1);
        }
        state.landed();
        ASSERT_FALSE(state.isBusy());
        ASSERT_EQ(state.isFull(), state.phase() == Phase::shown);
    }
}

} // namespace
} // namespace velmo
