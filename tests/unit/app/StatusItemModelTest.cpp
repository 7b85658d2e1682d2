#include "app/StatusItemModel.h"

#include "app/Credit.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using State = StatusItemModel::State;
using Action = ShellAction;

constexpr State kAllStates[] = {State::idle,      State::setup,  State::preparing,
                                State::recording, State::paused, State::saving};

QStringList titles(const std::vector<StatusMenuEntry>& menu) {
    QStringList all;
    for (const StatusMenuEntry& entry : menu) {
        all << (entry.isSeparator() ? QStringLiteral("-") : entry.title);
    }
    return all;
}

TEST(StatusItemModel, WhileRecordingTheImageIsRedAndTheClockRunsBesideIt) {
    const StatusItemLook look = StatusItemModel::look(State::recording, 83.9);
    EXPECT_EQ(look.image, "record.circle.fill");
    EXPECT_EQ(look.accessibilityText, "Grabando");
    EXPECT_EQ(look.tint, StatusTint::red);
    EXPECT_EQ(look.title, " 01:23");
    EXPECT_EQ(static_cast<int>(look.imagePosition), 7);
}

TEST(StatusItemModel, WhilePausedTheImageIsOrangeAndTheClockStays) {
    const StatusItemLook look = StatusItemModel::look(State::paused, 3723);
    EXPECT_EQ(look.image, "pause.circle.fill");
    EXPECT_EQ(look.accessibilityText, "Grabando");
    EXPECT_EQ(look.tint, StatusTint::orange);
    EXPECT_EQ(look.title, " 1:02:03");
}

TEST(StatusItemModel, InEveryOtherStateItIsAPlainCircleWithoutAClock) {
    for (const State state : {State::idle, State::setup, State::preparing, State::saving}) {
        const StatusItemLook look = StatusItemModel::look(state, 55);
        EXPECT_EQ(look.image, "record.circle");
        EXPECT_EQ(look.accessibilityText, "Velmo Studio");
        EXPECT_EQ(look.tint, StatusTint::none);
        EXPECT_EQ(look.title, "");
    }
}

TEST(StatusItemModel, TheMenuOfARunningRecordingEndsItPausesItAndMarksIt) {
    const auto menu = StatusItemModel::menu(State::recording, true);
    EXPECT_EQ(titles(menu),
              QStringList({"Terminar y guardar", "Pausar", "Agregar marcador", "-", "Empezar de nuevo", "Descartar"}));
    EXPECT_EQ(menu[0].action, Action::stopAndSave);
    EXPECT_EQ(menu[1].action, Action::togglePause);
    EXPECT_EQ(menu[2].action, Action::addMarker);
    EXPECT_EQ(menu[4].action, Action::restart);
    EXPECT_EQ(menu[5].action, Action::discard);
}

TEST(StatusItemModel, WhilePausedTheSecondEntryResumes) {
    const auto menu = StatusItemModel::menu(State::paused, false);
    ASSERT_EQ(menu.size(), 6U);
    EXPECT_EQ(menu[1].title, "Reanudar");
    EXPECT_EQ(menu[1].action, Action::togglePause);
}

TEST(StatusItemModel, TheMenuWithoutARecordingLeadsToOneAndToTheLibrary) {
    const QString credit = QString::fromUtf8(Credit::text);
    for (const State state : {State::idle, State::setup, State::preparing, State::saving}) {
        const auto menu = StatusItemModel::menu(state, true);
        EXPECT_EQ(titles(menu),
                  QStringList({"Nueva grabación…", "Grabar ahora  ⌃G", "-", "Abrir biblioteca", "Abrir Velmo Quadrel",
                               "Abrir carpeta de videos", "-", credit, Credit::site, "-", "Salir de Velmo Studio"}));
        EXPECT_EQ(menu[0].action, Action::openSetup);
        EXPECT_EQ(menu[1].action, Action::startNow);
        EXPECT_EQ(menu[3].action, Action::openLibrary);
        EXPECT_EQ(menu[4].action, Action::openQuadrel);
        EXPECT_EQ(menu[5].action, Action::openFolder);
        EXPECT_EQ(menu[7].action, std::nullopt) << "the credit line does nothing";
        EXPECT_EQ(menu[8].action, Action::openSite);
        EXPECT_EQ(menu[10].action, Action::quit);
    }
}

TEST(StatusItemModel, TheQuadrelEntryFollowsItsAvailabilityWhenTheMenuIsBuilt) {
    StatusItemModel model;
    const auto first = model.update(State::idle, 0, false);
    ASSERT_TRUE(first.menu);
    EXPECT_FALSE(titles(*first.menu).contains("Abrir Velmo Quadrel"));
    EXPECT_FALSE(model.update(State::idle, 0, true).menu) << "it is not built for this alone";
    EXPECT_TRUE(titles(*model.update(State::setup, 0, true).menu).contains("Abrir Velmo Quadrel"));
}

TEST(StatusItemModel, TheFirstValueBuildsTheMenuWhateverTheState) {
    for (const State state : kAllStates) {
        EXPECT_TRUE(StatusItemModel().update(state, 0, false).menu);
    }
}

TEST(StatusItemModel, TheClockMovesWithoutBuildingTheMenuAnew) {
    StatusItemModel model;
    EXPECT_TRUE(model.update(State::recording, 1, false).menu);
    const auto second = model.update(State::recording, 2, false);
    EXPECT_FALSE(second.menu);
    EXPECT_EQ(second.look.title, " 00:02");
}

TEST(StatusItemModel, AnotherModifierOfTheKeysBuildsTheMenuAnew) {
    StatusItemModel model;
    model.update(State::idle, 0, false);
    EXPECT_FALSE(model.update(State::idle, 0, false, ShortcutModifier::control).menu);
    const auto update = model.update(State::idle, 0, false, ShortcutModifier::controlAlt);
    ASSERT_TRUE(update.menu);
    EXPECT_EQ((*update.menu)[1].title, "Grabar ahora  ⌃⌥G");
}

TEST(StatusItemModel, PausingBuildsTheMenuAnew) {
    StatusItemModel model;
    model.update(State::recording, 1, false);
    const auto paused = model.update(State::paused, 1, false);
    ASSERT_TRUE(paused.menu);
    EXPECT_EQ((*paused.menu)[1].title, "Reanudar");
    EXPECT_TRUE(model.update(State::recording, 1, false).menu);
}

} // namespace
} // namespace velmo
