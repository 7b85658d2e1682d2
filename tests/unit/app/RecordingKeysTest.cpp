#include "app/RecordingKeys.h"

#include "unit/session/World.h"

#include <utility>

namespace velmo {
namespace {

using test::settle;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordingKeysTest : public test::World {
protected:
    void press(std::uint32_t id) {
        for (const HotKeys::RecordingKey& key : recordingKeys(*controller)) {
            if (key.id == id) {
                key.action();
                settle();
            }
        }
    }
};

TEST_F(RecordingKeysTest, AreSeventeenByIdAndPlaceInTheirOrder) {
    std::vector<std::pair<std::uint32_t, int>> table;
    for (const HotKeys::RecordingKey& key : recordingKeys(*controller)) {
        table.emplace_back(key.id, key.key);
    }
    const std::vector<std::pair<std::uint32_t, int>> expected{{2, 35},  {3, 46},  {4, 2},   {5, 11},  {6, 6},  {7, 15},
                                                              {8, 24},  {9, 27},  {10, 0},  {11, 3},  {12, 8}, {13, 40},
                                                              {14, 17}, {20, 18}, {21, 19}, {22, 20}, {23, 21}};
    EXPECT_EQ(table, expected);
}

TEST_F(RecordingKeysTest, TheKeyThatIsAlwaysThereIsControlG) {
    EXPECT_EQ(kToggleKeyID, 1U);
    EXPECT_EQ(kToggleKeyCode, 5);
}

TEST_F(RecordingKeysTest, ControlPPausesAndResumes) {
    record();
    press(2);
    EXPECT_EQ(controller->state(), test::State::paused);
    press(2);
    EXPECT_EQ(controller->state(), test::State::recording);
}

TEST_F(RecordingKeysTest, ControlMMarks) {
    record();
    press(3);
    EXPECT_EQ(controller->markers().size(), 1U);
}

TEST_F(RecordingKeysTest, AKeyWhoseSurfaceDoesNotExistReachesAGuardThatDoesNothing) {
    controller->attach({});
    record();
    for (const std::uint32_t id : {4U, 5U, 7U, 10U, 11U, 12U, 13U, 14U, 20U, 21U, 22U, 23U}) {
        press(id);
    }
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_EQ(controller->state(), test::State::recording);
    EXPECT_FALSE(controller->regionOn());
    EXPECT_FALSE(controller->spotlightOn());
}

TEST_F(RecordingKeysTest, Control4InTheModeScreenDoesNothing) {
    record();
    press(23);
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_FALSE(controller->presenterOn());
}

class SceneKeysTest : public RecordingKeysTest {
protected:
    void SetUp() override {
        prefs.mode = RecordMode::screenCam;
        record();
    }
};

TEST_F(SceneKeysTest, Control1WhileInScreenDoesNothing) {
    press(20);
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_FALSE(controller->presenterOn());
}

} // namespace
} // namespace velmo
