#include "World.h"

#include "media/RecordingJournal.h"

#include <QTemporaryDir>

#include <fstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::test {
namespace {

/// A session that writes into a real folder.
class SessionFinish : public World {
protected:
    SessionFinish() {
        library.url = std::filesystem::path(folder.path().toStdString()) / "class.mp4";
        std::ofstream(library.url) << "video";
    }
    bool fileExists() const { return std::filesystem::exists(library.url); }
    std::string url() const { return library.url.string(); }

    QTemporaryDir folder;
};

const Calls kTakenApart{"spotlight.stop",     "presenter.reset",      "zoom.setRegion none", "zoom.setSpotlight false",
                        "controlBar.hide",    "kitPanel.hide",        "teleprompter.hide",   "drawing.teardown",
                        "board.endRecording", "bubble.exitCameraOnly"};
const Calls kPreviewsTakenDown{"bubble.hide", "camera.stop", "secondBubble.hide", "secondCamera.stop", "phone.hide"};

Calls joined(std::initializer_list<Calls> parts) {
    Calls all;
    for (const Calls& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

TEST_F(SessionFinish, AStopSavesInTheGivenOrder) {
    record();
    advance(5);
    controller->addMarker();
    controller->addChapter("Dos", "a.pdf");
    classKit.list = {KitItem{}};
    calls.clear();
    controller->stop();
    EXPECT_EQ(controller->state(), State::saving);
    EXPECT_THAT(taken(), ElementsAre("controlBar.hide"));
    settle();
    EXPECT_EQ(calls, joined({{"recorder.stop", "mixer.mixIfNeeded " + url()},
                             kTakenApart,
                             kPreviewsTakenDown,
                             {"classKit.writeFolder " + url() + " copies", "library.add " + url(),
                              "libraryWindow.show " + url()}}));
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(library.duration, 5);
    EXPECT_THAT(library.markers, ElementsAre(5, 5));
    EXPECT_EQ(library.titles, (QStringList{"Marcador 1", "Dos"}));
    EXPECT_EQ(classKit.writtenChapters.size(), 2u);
    EXPECT_EQ(classKit.writtenItems.size(), 1u);
    EXPECT_EQ(script.alive, 0);
    EXPECT_TRUE(fileExists());
}

TEST_F(SessionFinish, NoChaptersAreNoTitles) {
    record();
    controller->stop();
    settle();
    EXPECT_EQ(count("library.add " + url()), 1);
    EXPECT_THAT(library.titles, IsEmpty());
}

TEST_F(SessionFinish, TheTimeOfTheSavingDoesNotCount) {
    record();
    advance(5);
    script.stopIsHeld = true;
    controller->stop();
    advance(20);
    script.heldStop(library.url);
    settle();
    EXPECT_EQ(library.duration, 5);
    EXPECT_EQ(controller->elapsed(), 5) << "what the last session left stays readable";
    EXPECT_EQ(timers.running(), 0);
}

TEST_F(SessionFinish, TheNextSessionCanBeginWhileTheFolderIsWritten) {
    record();
    advance(5);
    controller->addMarker();
    classKit.isHeld = true;
    controller->stop();
    settle();
    ASSERT_EQ(controller->state(), State::idle);
    EXPECT_EQ(count("library.add " + url()), 0);
    record();
    advance(2);
    classKit.held();
    settle();
    EXPECT_EQ(controller->state(), State::recording);
    EXPECT_EQ(library.duration, 5);
    EXPECT_THAT(library.markers, ElementsAre(5));
}

TEST_F(SessionFinish, MaterialAddedAfterTheStopIsNotOfThisClass) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    classKit.list = {KitItem{}};
    script.heldStop(library.url);
    settle();
    EXPECT_THAT(classKit.writtenItems, IsEmpty());
}

TEST_F(SessionFinish, AFailedStopLeavesNoFileAndSaysWhy) {
    record();
    script.stopError = Error{"VelmoStudio.RecorderError", 2, "La grabación terminó antes de capturar imagen."};
    controller->stop();
    settle();
    EXPECT_EQ(calls.back(), "inform No se pudo guardar la grabación | La grabación terminó antes de capturar imagen.");
    EXPECT_EQ(calls[calls.size() - 2], "application.toFront");
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_FALSE(fileExists());
    alerts.answer(0);
    settle();
    EXPECT_EQ(calls.back(), "libraryWindow.show none");
    EXPECT_EQ(count("library.add " + url()), 0);
    EXPECT_EQ(count("mixer.mixIfNeeded " + url()), 0);
}

TEST_F(SessionFinish, AFailedStopLeavesTheFileWhenTheNextLaunchCanRepairIt) {
    record();
    std::ofstream(journalOf(library.url)) << "journal";
    script.stopError = Error{"VelmoStudio.RecorderError", 2, "Se conserva."};
    alerts.answers = {0};
    controller->stop();
    settle();
    EXPECT_TRUE(fileExists());
    EXPECT_TRUE(hasJournal(library.url));
    EXPECT_EQ(count("library.add " + url()), 0);
}

TEST_F(SessionFinish, ARecorderThatNeverAnswersItsStopIsAFailedStop) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    ASSERT_EQ(controller->state(), State::saving);
    alerts.answers = {0};
    script.heldStop = {};
    settle();
    EXPECT_EQ(controller->state(), State::idle);
    EXPECT_EQ(calls.back(), "libraryWindow.show none");
}

TEST_F(SessionFinish, ACancelThrowsEverythingAway) {
    record();
    alerts.answers = {0};
    controller->cancel();
    settle();
    const auto stopped = std::find(calls.begin(), calls.end(), "recorder.stop");
    EXPECT_EQ(*(stopped - 1), "controlBar.hide");
    EXPECT_EQ(Calls(stopped + 1, calls.end()), joined({kTakenApart, kPreviewsTakenDown, {"libraryWindow.show none"}}));
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(controller->state(), State::idle);
}

TEST_F(SessionFinish, AFailingStopIsNoMatterWhenThrowingAway) {
    record();
    script.stopError = Error{"x", 1, "y"};
    alerts.answers = {0};
    controller->cancel();
    settle();
    EXPECT_EQ(calls.back(), "libraryWindow.show none");
    EXPECT_EQ(count("application.toFront"), 1) << "only the question";
    EXPECT_FALSE(fileExists());
}

TEST_F(SessionFinish, ARestartKeepsThePreviews) {
    record();
    alerts.answers = {0};
    controller->restart();
    settle();
    EXPECT_EQ(controller->state(), State::preparing);
    EXPECT_EQ(count("camera.stop"), 0);
    EXPECT_EQ(count("libraryWindow.show none"), 0);
    EXPECT_FALSE(fileExists());
    advance(0.25);
    settle();
    EXPECT_EQ(controller->state(), State::recording);
}

TEST_F(SessionFinish, AfterASessionAllEffectsAreOff) {
    record();
    controller->toggleZoom();
    controller->toggleSpotlight();
    ASSERT_TRUE(controller->zoomOn());
    ASSERT_TRUE(controller->spotlightOn());
    controller->stop();
    settle();
    EXPECT_FALSE(controller->zoomOn());
    EXPECT_FALSE(controller->spotlightOn());
    EXPECT_FALSE(controller->regionOn());
    EXPECT_FALSE(controller->presenterOn());
    EXPECT_EQ(controller->scene(), Scene::screen);
    EXPECT_EQ(count("camera.stopFrames"), 0);
}

TEST_F(SessionFinish, AControllerThatGoesWhileStoppingIsNotTouchedAgain) {
    record();
    script.stopIsHeld = true;
    controller->stop();
    settle();
    controller.reset();
    calls.clear();
    script.heldStop(library.url);
    settle();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(fileExists());
}

TEST_F(SessionFinish, AControllerThatGoesWhileStartingIsNotTouchedAgain) {
    script.startIsHeld = true;
    controller->start();
    advance(0.25);
    settle();
    ASSERT_EQ(script.alive, 1);
    controller.reset();
    EXPECT_EQ(script.alive, 0) << "the capture ends with its controller";
    calls.clear();
    script.heldStart(Result<void>());
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SessionFinish, AControllerThatGoesUnderAQuestionIsNotTouchedAgain) {
    record();
    controller->cancel();
    controller.reset();
    calls.clear();
    alerts.answer(0);
    settle();
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
} // namespace velmo::test
