#include "panels/BarControls.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using State = RecorderController::State;

std::vector<std::string> helps(State state) {
    std::vector<std::string> all;
    for (const BarControl& control : barControls()) {
        if (control.shown({state})) {
            all.push_back(control.face({state}).help.toStdString());
        }
    }
    return all;
}

TEST(BarControls, StandInTheirOrderWithTheirHelpTexts) {
    EXPECT_THAT(helps(State::recording),
                testing::ElementsAre("Pausar (⌃P)", "Marcador (⌃M)", "Dibujar sobre la pantalla (⌃D)",
                                     "Empezar de nuevo", "Descartar"));
    EXPECT_THAT(helps(State::paused),
                testing::ElementsAre("Reanudar (⌃P)", "Marcador (⌃M)", "Dibujar sobre la pantalla (⌃D)",
                                     "Empezar de nuevo", "Descartar"));
}

TEST(BarControls, ClassMaterialStandsLastWhileThereIsSomeAndIsLitWhileShown) {
    using Material = BarState::Material;
    const BarControl& material = barControls().back();
    EXPECT_EQ(material.face({}).help, QStringLiteral("Material de la clase (⌃K)"));
    EXPECT_FALSE(material.shown({State::recording, Material::none}));
    EXPECT_TRUE(material.shown({State::recording, Material::hidden}));
    EXPECT_FALSE(material.face({State::recording, Material::hidden}).lit);
    EXPECT_TRUE(material.face({State::recording, Material::shown}).lit);
}

TEST(BarControls, DrawingIsLitWhileTheMouseDraws) {
    const BarControl& drawing = barControls()[2];
    EXPECT_EQ(drawing.face({}).help, QStringLiteral("Dibujar sobre la pantalla (⌃D)"));
    EXPECT_FALSE(drawing.face({State::recording}).lit);
    EXPECT_TRUE(drawing.face({State::recording, BarState::Material::none, true}).lit);
}

TEST(BarControls, PauseBecomesPlayWhilePaused) {
    const BarControl& pause = barControls().front();
    EXPECT_EQ(pause.face({State::recording}).symbol, QStringLiteral("pause.fill"));
    EXPECT_EQ(pause.face({State::paused}).symbol, QStringLiteral("play.fill"));
    EXPECT_TRUE(pause.face({State::paused}).lit);
}

TEST(BarControls, AreNamedByTheirHelpWithoutTheKey) {
    EXPECT_EQ(nameOfHelp(QStringLiteral("Pausar (⌃P)")), QStringLiteral("Pausar"));
    EXPECT_EQ(nameOfHelp(QStringLiteral("Descartar")), QStringLiteral("Descartar"));
}

} // namespace
} // namespace velmo
