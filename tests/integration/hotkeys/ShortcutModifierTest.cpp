#include "app/HotKeys.h"

#include "integration/hotkeys/OtherClient.h"
#include "platform/desktop/XcbHotKeyService.h"
#include "settings/ShortcutModifier.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace velmo {
namespace {

using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kPlaceG = 5;
constexpr int kPlaceF = 3;
constexpr int kPlaceP = 35;
constexpr std::uint8_t kG = 42;
constexpr std::uint8_t kF = 41;
constexpr std::uint8_t kP = 33;

class ShortcutModifierTest : public testing::Test {
protected:
    ShortcutModifierTest() {
        keys_.install();
        keys_.registerKey(1, kPlaceG, keys_.modifiers(), note("toggle"));
        other_.focusWindow();
    }
    HotKeys::Action note(const char* what) {
        return [this, what] { done_.emplace_back(what); };
    }
    void choose(ShortcutModifier modifier) { keys_.setModifiers(rowOf(modifier).mask); }
    /// What was done; the last key says when no more can come.
    std::vector<std::string> doneUntil(const char* last) {
        EXPECT_TRUE(waitUntil([&] { return !done_.empty() && done_.back() == last; }));
        return std::exchange(done_, {});
    }

    XcbHotKeyService service_;
    OtherClient other_;
    std::vector<std::string> done_;
    std::vector<std::string> log_;
    HotKeys keys_{service_,
                  {{2, kPlaceP, note("pause")}, {11, kPlaceF, note("spotlight")}},
                  [](std::function<void()> work) { work(); },
                  [this](const std::string& line) { log_.push_back(line); }};
};

TEST_F(ShortcutModifierTest, TheNewKeysWorkAtOnceAndTheOldOnesBelongToOthersAgain) {
    keys_.setRecordingKeys(true);
    other_.tapWithControl(kG);
    EXPECT_THAT(doneUntil("toggle"), ElementsAre("toggle"));
    other_.heardPresses();

    choose(ShortcutModifier::controlAlt);
    other_.tapWithControl(kG);
    other_.tapWith({kControlKey, kAltKey}, kP);
    other_.tapWith({kAltKey}, kF);
    other_.tapWith({kControlKey, kAltKey}, kG);
    EXPECT_THAT(doneUntil("toggle"), ElementsAre("pause", "toggle"));
    EXPECT_EQ(other_.heardPresses(), 2 + 2 + 2 + 2) << "Control and G, Alt and F, and the held keys of the two others";

    choose(ShortcutModifier::super);
    other_.tapWith({kControlKey, kAltKey}, kG);
    other_.tapWith({kSuperKey}, kF);
    other_.tapWith({kSuperKey}, kG);
    EXPECT_THAT(doneUntil("toggle"), ElementsAre("spotlight", "toggle"));
    EXPECT_THAT(log_, IsEmpty());
}

TEST_F(ShortcutModifierTest, AKeyThatAnotherProgramHoldsIsKnownAndIsHadWithAnotherModifier) {
    ASSERT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), 0);
    EXPECT_THAT(keys_.taken(), ElementsAre(11U)) << "also without a recording";
    keys_.setRecordingKeys(true);
    EXPECT_THAT(keys_.taken(), ElementsAre(11U));
    EXPECT_THAT(log_, ElementsAre("atajo 11 no disponible (10)"));
    choose(ShortcutModifier::super);
    EXPECT_THAT(keys_.taken(), IsEmpty());
    other_.tapWith({kSuperKey}, kF);
    EXPECT_THAT(doneUntil("spotlight"), ElementsAre("spotlight"));
    other_.ungrab(kF, XCB_MOD_MASK_CONTROL);
}

TEST_F(ShortcutModifierTest, LookingForTakenKeysHoldsNone) {
    EXPECT_THAT(keys_.taken(), IsEmpty());
    EXPECT_EQ(other_.grab(kF, XCB_MOD_MASK_CONTROL), 0);
    EXPECT_EQ(other_.grab(kP, XCB_MOD_MASK_CONTROL), 0);
    other_.ungrab(kF, XCB_MOD_MASK_CONTROL);
    other_.ungrab(kP, XCB_MOD_MASK_CONTROL);
}

} // namespace
} // namespace velmo
