#include "panels/BarControls.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

namespace velmo {
namespace {

using State = RecorderController::State;
using Material = BarSurroundings::Material;

/// Everything is there.
BarState full() {
    BarState bar;
    bar.state = State::recording;
    bar.mode = RecordMode::screenCam;
    bar.hasScript = true;
    bar.around = {true, true, false, true, true, false, false, Material::hidden};
    return bar;
}

std::vector<std::string> symbols(const BarState& bar) {
    std::vector<std::string> all;
    for (const BarControl& control : barControls()) {
        if (control.shown(bar)) {
            all.push_back(control.face(bar).symbol.toStdString());
        }
    }
    return all;
}

std::vector<std::string> helps(const BarState& bar) {
    std::vector<std::string> all;
    for (const BarControl& control : barControls()) {
        if (control.shown(bar)) {
            all.push_back(control.face(bar).help.toStdString());
        }
    }
    return all;
}

TEST(BarControls, StandInTheirOrder) {
    EXPECT_THAT(symbols(full()),
                ElementsAre("pause.fill", "bookmark.fill", "pencil.tip.crop.circle", "crop", "plus.magnifyingglass",
                            "plus.viewfinder", "flashlight.off.fill", "macwindow", "person.crop.circle",
                            "video.badge.plus", "arrow.counterclockwise", "trash", "pencil.and.scribble", "iphone",
                            "text.viewfinder", "books.vertical.fill"));
}

TEST(BarControls, TheZoomThatIsOnHasItsOwn) {
    BarState bar = full();
    bar.mode = RecordMode::screen;
    bar.around = {};
    bar.hasScript = false;
    bar.zoomOn = true;
    EXPECT_THAT(helps(bar),
                ElementsAre("Pausar (⌃P)", "Marcador (⌃M)", "Dibujar sobre la pantalla (⌃D)",
                            "Grabar solo una zona (⌃R) · ⌥clic o clic derecho: elegir otra zona", "Alejar un paso (⌃−)",
                            "Acercar más (⌃+)", "Sigue al mouse · toca para dejarlo fijo aquí",
                            "Acercar a otra área (⌃A)", "Volver a la vista normal (⌃Z)",
                            "Foco: oscurece todo menos alrededor del mouse (⌃F)", "Empezar de nuevo", "Descartar"));
    bar.zoomFollowing = false;
    EXPECT_THAT(symbols(bar), Contains("pin.fill"));
}

TEST(BarControls, TheCameraAloneHasNothingOfTheScreen) {
    BarState bar = full();
    bar.mode = RecordMode::cam;
    EXPECT_THAT(symbols(bar), ElementsAre("pause.fill", "bookmark.fill", "arrow.counterclockwise", "trash",
                                          "pencil.and.scribble", "iphone", "text.viewfinder", "books.vertical.fill"));
}

TEST(BarControls, TheScreenAloneHasNoScenes) {
    BarState bar = full();
    bar.mode = RecordMode::screen;
    EXPECT_THAT(helps(bar), Not(Contains(StartsWith("Vista del video"))));
    bar = full();
    bar.around.hasVideo = false;
    EXPECT_THAT(helps(bar), Not(Contains(StartsWith("Vista del video"))));
    EXPECT_THAT(helps(bar), Not(Contains("Mostrar u ocultar la segunda cámara")));
}

TEST(BarControls, WithoutMaterialOrScriptTheirControlsAreAbsent) {
    BarState bar = full();
    bar.around.material = Material::none;
    bar.hasScript = false;
    EXPECT_THAT(symbols(bar), Not(Contains("books.vertical.fill")));
    EXPECT_THAT(symbols(bar), Not(Contains("text.viewfinder")));
}

TEST(BarControls, WhatIsOnIsLitAndSaysHowToEndIt) {
    BarState bar = full();
    bar.regionOn = bar.spotlightOn = true;
    bar.around.scriptVisible = bar.around.phoneVisible = true;
    bar.around.material = Material::shown;
    EXPECT_THAT(helps(bar),
                testing::IsSupersetOf({"Volver a toda la pantalla (⌃R)", "Quitar el foco (⌃F)",
                                       "Ocultar el guion (⌃T para empezar o pausar)", "Quitar el celular del video"}));
    EXPECT_THAT(symbols(bar), testing::IsSupersetOf({"crop.rotate", "flashlight.on.fill"}));
    EXPECT_TRUE(barControls().back().face(bar).lit);
}

TEST(BarControls, PauseBecomesPlayWhilePaused) {
    const BarControl& pause = barControls().front();
    BarState bar = full();
    EXPECT_EQ(pause.face(bar).symbol, QStringLiteral("pause.fill"));
    bar.state = State::paused;
    EXPECT_EQ(pause.face(bar), (BarControl::Face{"play.fill", "Reanudar (⌃P)", true, {}}));
}

TEST(BarControls, TheMenuOfScenesMarksTheOneThatIsOn) {
    BarState bar = full();
    bar.scene = Scene::side;
    for (const BarControl& control : barControls()) {
        if (control.menu != BarControl::Menu::onClick) {
            continue;
        }
        const auto entries = control.entries(bar);
        ASSERT_EQ(entries.size(), 4u);
        EXPECT_EQ(entries[2].title, QStringLiteral("Yo al lado de mis diapositivas"));
        EXPECT_EQ(entries[2].key, QStringLiteral("⌃3"));
        EXPECT_TRUE(entries[2].current);
        EXPECT_FALSE(entries[0].current);
    }
}

TEST(BarControls, TheMenuOfTheRegionSaysWhatPressingWillDo) {
    BarState bar = full();
    const auto second = [&bar] {
        for (const BarControl& control : barControls()) {
            if (control.menu == BarControl::Menu::onRightClick) {
                return control.entries(bar)[1].title;
            }
        }
        return QString();
    };
    EXPECT_EQ(second(), QStringLiteral("Usar la zona"));
    bar.regionOn = true;
    EXPECT_EQ(second(), QStringLiteral("Volver a toda la pantalla"));
}

TEST(BarControls, AreNamedByTheirHelpWithoutTheKey) {
    EXPECT_EQ(nameOfHelp(QStringLiteral("Pausar (⌃P)")), QStringLiteral("Pausar"));
    EXPECT_EQ(nameOfHelp(QStringLiteral("Descartar")), QStringLiteral("Descartar"));
}

} // namespace
} // namespace velmo
