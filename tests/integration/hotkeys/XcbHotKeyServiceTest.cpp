#include "platform/desktop/XcbHotKeyService.h"

#include "integration/hotkeys/OtherClient.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <gmock/gmock.h>

#include <vector>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kPlaceG = 5;
constexpr int kPlaceF = 3;
constexpr int kPlaceZ = 6;
constexpr int kPlace4 = 21;
constexpr std::uint8_t kG = 42;
constexpr std::uint8_t kF = 41;
constexpr std::uint8_t kZ = 52;
constexpr std::uint8_t k4 = 13;
constexpr int kBadAccess = 10;

class XcbHotKeyServiceTest : public testing::Test {
protected:
    XcbHotKeyServiceTest() {
        service_.installHandler([this](std::uint32_t id) { fired_.push_back(id); });
        other_.focusWindow();
    }

    /// What fired until nothing more can come: a key that the service does not know comes after all others.
    std::vector<std::uint32_t> fired() {
        constexpr std::uint32_t kLast = 99;
        service_.registerHotKey(kLast, kPlaceZ, kControlModifier);
        other_.tapWithControl(kZ);
        const QDeadlineTimer deadline(10'000);
        while ((fired_.empty() || fired_.back() != kLast) && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        service_.unregisterHotKey(kLast);
        EXPECT_FALSE(fired_.empty());
        fired_.pop_back();
        return std::exchange(fired_, {});
    }

    void hold(std::uint8_t keyCode, int milliseconds) {
        other_.press(kControlKey);
        other_.press(keyCode);
        const QDeadlineTimer end(milliseconds);
        while (!end.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            QThread::msleep(5);
        }
        other_.release(keyCode);
        other_.release(kControlKey);
    }

    XcbHotKeyService service_;
    OtherClient other_;
    std::vector<std::uint32_t> fired_;
};

TEST_F(XcbHotKeyServiceTest, AKeyFiresWhileAnotherProgramsWindowHasTheFocus) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    other_.tapWithControl(kG);
    EXPECT_THAT(fired(), ElementsAre(1U));
    EXPECT_EQ(other_.heardPresses(), 2); // Control twice; the keys never reach the window
}

TEST_F(XcbHotKeyServiceTest, TheKeyWithoutControlBelongsToTheWindowInFront) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    other_.tap(kG);
    EXPECT_THAT(fired(), IsEmpty());
    EXPECT_EQ(other_.heardPresses(), 2); // G, and the Control of the closing key
}

TEST_F(XcbHotKeyServiceTest, AnotherModifierBesideControlIsAnotherKey) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    other_.press(kShiftKey);
    other_.tapWithControl(kG);
    other_.release(kShiftKey);
    EXPECT_THAT(fired(), IsEmpty());
}

TEST_F(XcbHotKeyServiceTest, EachKeyTellsItsOwnId) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    ASSERT_EQ(service_.registerHotKey(11, kPlaceF, kControlModifier), 0);
    ASSERT_EQ(service_.registerHotKey(23, kPlace4, kControlModifier), 0);
    other_.tapWithControl(k4);
    other_.tapWithControl(kG);
    other_.tapWithControl(kF);
    EXPECT_THAT(fired(), ElementsAre(23U, 1U, 11U));
}

TEST_F(XcbHotKeyServiceTest, ATakenKeyFailsAtOnceWithBadAccessAndTheOthersWork) {
    ASSERT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), 0);
    EXPECT_EQ(service_.registerHotKey(11, kPlaceF, kControlModifier), kBadAccess);
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    other_.tapWithControl(kF);
    other_.tapWithControl(kG);
    EXPECT_THAT(fired(), ElementsAre(1U));
    other_.ungrab(kF, XCB_MOD_MASK_CONTROL);
}

TEST_F(XcbHotKeyServiceTest, AKeyTakenOnlyWithALockOnLeavesNoVariantBehind) {
    constexpr std::uint16_t kWithCapsLock = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_LOCK;
    ASSERT_EQ(other_.grab(kF, kWithCapsLock), 0);
    EXPECT_EQ(service_.registerHotKey(11, kPlaceF, kControlModifier), kBadAccess);
    EXPECT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), 0);
    other_.ungrab(kF, XCB_MOD_MASK_CONTROL);
    other_.ungrab(kF, kWithCapsLock);
}

TEST_F(XcbHotKeyServiceTest, CapsLockAndNumLockMakeNoDifference) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    other_.tap(kCapsLockKey);
    other_.tapWithControl(kG);
    other_.tap(kNumLockKey);
    other_.tapWithControl(kG);
    other_.tap(kCapsLockKey);
    other_.tapWithControl(kG);
    other_.tap(kNumLockKey);
    other_.tapWithControl(kG);
    EXPECT_THAT(fired(), ElementsAre(1U, 1U, 1U, 1U));
}

TEST_F(XcbHotKeyServiceTest, AHeldKeyFiresOnce) {
    ASSERT_EQ(service_.registerHotKey(1, kPlaceG, kControlModifier), 0);
    hold(kG, 1500); // the server repeats after 660 ms
    EXPECT_THAT(fired(), ElementsAre(1U));
    other_.tapWithControl(kG);
    EXPECT_THAT(fired(), ElementsAre(1U));
}

TEST_F(XcbHotKeyServiceTest, AnUnregisteredKeyIsFreeForOthers) {
    ASSERT_EQ(service_.registerHotKey(11, kPlaceF, kControlModifier), 0);
    EXPECT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), kBadAccess);
    service_.unregisterHotKey(11);
    EXPECT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), 0);
    other_.ungrab(kF, XCB_MOD_MASK_CONTROL);
}

TEST_F(XcbHotKeyServiceTest, RegisteringAnIdAgainMovesItToItsNewPlace) {
    ASSERT_EQ(service_.registerHotKey(7, kPlaceG, kControlModifier), 0);
    ASSERT_EQ(service_.registerHotKey(7, kPlaceF, kControlModifier), 0);
    other_.tapWithControl(kG);
    other_.tapWithControl(kF);
    EXPECT_THAT(fired(), ElementsAre(7U));
}

TEST_F(XcbHotKeyServiceTest, APlaceThatIsNoKeyIsRefused) {
    EXPECT_EQ(service_.registerHotKey(1, 10, kControlModifier), 2);
}

TEST(XcbHotKeyServiceLifeTest, TheKeysAreFreeWhenTheServiceHasGone) {
    OtherClient other;
    {
        XcbHotKeyService service;
        ASSERT_EQ(service.registerHotKey(1, kPlaceG, kControlModifier), 0);
    }
    EXPECT_EQ(other.grab(kG, XCB_MOD_MASK_CONTROL), 0);
}

} // namespace
} // namespace velmo
