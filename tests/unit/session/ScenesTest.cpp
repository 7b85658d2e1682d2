#include "World.h"

#include <random>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace velmo::test {
namespace {

class Scenes : public World {
protected:
    Scenes() { prefs.mode = RecordMode::screenCam; }
};

TEST_F(Scenes, TheTeacherComesAndGoesByTheSameKey) {
    record();
    controller->setScene(Scene::me);
    EXPECT_EQ(controller->scene(), Scene::me);
    EXPECT_TRUE(controller->presenterOn());
    EXPECT_EQ(controller->flash(), "Solo yo");
    controller->setScene(Scene::me);
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_FALSE(controller->presenterOn());
    EXPECT_EQ(controller->flash(), "Pantalla y burbuja");
    EXPECT_THAT(taken(), ElementsAre("presenter.enter framed", "presenter.exit"));
}

TEST_F(Scenes, ScreenInScreenIsNothing) {
    record();
    controller->setScene(Scene::screen);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(controller->flash());
}

TEST_F(Scenes, NeedACameraAndTheScreen) {
    for (const RecordMode mode : {RecordMode::screen, RecordMode::cam}) {
        prefs.mode = mode;
        controller->setScene(Scene::column);
        EXPECT_EQ(controller->scene(), Scene::screen) << "no session";
    }
    prefs.mode = RecordMode::screen;
    record();
    controller->setScene(Scene::column);
    EXPECT_EQ(controller->scene(), Scene::screen);
    prefs.mode = RecordMode::screenCam;
    camera.video = false;
    controller->setScene(Scene::column);
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(controller->flash());
}

TEST_F(Scenes, ThePresenterKeyLeavesTheColumn) {
    record();
    controller->setScene(Scene::column);
    controller->togglePresenter();
    EXPECT_EQ(controller->scene(), Scene::screen);
}

TEST_F(Scenes, ThePresenterKeyGoesToTheChosenScene) {
    record();
    controller->togglePresenter();
    EXPECT_EQ(controller->scene(), Scene::me);
    controller->togglePresenter();
    prefs.presenterStyle = PresenterStyle::sideLeft;
    controller->togglePresenter();
    EXPECT_EQ(controller->scene(), Scene::side);
}

TEST_F(Scenes, EachSceneTakesAStyleOfItsKind) {
    record();
    prefs.presenterStyle = PresenterStyle::sideLeft;
    controller->setScene(Scene::me);
    controller->setScene(Scene::side);
    EXPECT_THAT(taken(), ElementsAre("presenter.enter framed", "presenter.exit", "presenter.enter sideLeft"));
    controller->setScene(Scene::screen);
    prefs.presenterStyle = PresenterStyle::full;
    calls.clear();
    controller->setScene(Scene::side);
    controller->setScene(Scene::me);
    EXPECT_THAT(taken(), ElementsAre("presenter.enter sideRight", "presenter.exit", "presenter.enter full"));
}

TEST_F(Scenes, TheColumnTakesTheCameraTheBubbleAndTheName) {
    prefs.showName = true;
    prefs.presenterName = QStringLiteral(" Ana ");
    prefs.presenterRole = QStringLiteral("Física");
    record();
    controller->setScene(Scene::column);
    EXPECT_FALSE(controller->presenterOn());
    EXPECT_THAT(taken(), ElementsAre("camera.startFrames mirrored", "bubble.setCoveredByColumn true",
                                     "zoom.setNameTag Ana|Física", "zoom.setColumn true"));
    camera.frames({});
    EXPECT_THAT(taken(), ElementsAre("zoom.setCameraFrame"));
    controller->setScene(Scene::screen);
    EXPECT_THAT(taken(), ElementsAre("zoom.setColumn false", "bubble.setCoveredByColumn false"));
    advance(0.85);
    EXPECT_THAT(calls, Not(Contains("camera.stopFrames"))) << "the column is still sliding out";
    advance(0.1);
    EXPECT_THAT(calls, Contains("camera.stopFrames"));
}

TEST_F(Scenes, TheCameraGoesOnForAColumnThatComesBack) {
    record();
    controller->setScene(Scene::column);
    controller->setScene(Scene::me);
    advance(0.5);
    controller->setScene(Scene::column);
    calls.clear();
    advance(3);
    EXPECT_THAT(calls, Not(Contains("camera.stopFrames")));
}

TEST_F(Scenes, ASceneBringsBackABubbleThatWasPutAway) {
    bubble.hidden = true;
    record();
    controller->setScene(Scene::me);
    EXPECT_THAT(taken(), ElementsAre("bubble.toggleUserVisibility", "presenter.enter framed"));
}

TEST_F(Scenes, TheNextSceneWaitsForTheOldPresenterToGo) {
    presenter.flies = true;
    record();
    controller->setScene(Scene::me);
    presenter.land();
    calls.clear();
    controller->setScene(Scene::column);
    EXPECT_THAT(taken(), ElementsAre("presenter.exit"));
    presenter.land();
    EXPECT_THAT(taken(), Contains("zoom.setColumn true"));
}

TEST_F(Scenes, ASceneThatIsNoLongerWantedDoesNotCome) {
    presenter.flies = true;
    record();
    controller->setScene(Scene::me);
    presenter.land();
    controller->setScene(Scene::column);
    controller->setScene(Scene::screen);
    calls.clear();
    presenter.land();
    EXPECT_THAT(calls, Not(Contains("zoom.setColumn true")));
}

TEST_F(Scenes, TheBoardEndsTheScene) {
    record();
    controller->setScene(Scene::me);
    controller->toggleBoard();
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_FALSE(controller->presenterOn());
}

TEST_F(Scenes, TheEndOfARecordingTakesTheColumnBack) {
    record();
    controller->setScene(Scene::column);
    controller->stop();
    settle();
    EXPECT_THAT(calls, AllOf(Contains("camera.stopFrames"), Contains("presenter.reset")));
    EXPECT_EQ(controller->scene(), Scene::screen);
    calls.clear();
    record();
    controller->setScene(Scene::me);
    controller->stop();
    settle();
    EXPECT_THAT(calls, Not(Contains("camera.stopFrames")));
}

/// Keys in quick succession while flights are under way: once all has come to rest, what stands is what was asked last.
TEST_F(Scenes, QuickKeysEndInAConsistentState) {
    presenter.flies = true;
    record();
    std::mt19937 random(7);
    for (int sequence = 0; sequence < 50; ++sequence) {
        for (int key = 0; key < 12; ++key) {
            controller->setScene(kAllScenes[random() % 4]);
            advance(double(random() % 4) * 0.1);
            if (presenter.busy && random() % 2 == 0) {
                presenter.land();
            }
        }
        for (int flight = 0; presenter.busy; ++flight) {
            ASSERT_LT(flight, 4) << "comes to rest";
            presenter.land();
        }
        advance(1);
        EXPECT_EQ(presenter.full, controller->presenterOn());
        const bool inColumn = controller->scene() == Scene::column;
        EXPECT_EQ(script.zoom->column, inColumn);
        EXPECT_EQ(bool(camera.frames), inColumn);
        EXPECT_EQ(bubble.underColumn, inColumn);
        if (presenter.full) {
            EXPECT_EQ(presenter.style,
                      controller->scene() == Scene::side ? PresenterStyle::sideRight : PresenterStyle::framed);
        }
    }
}

} // namespace
} // namespace velmo::test
