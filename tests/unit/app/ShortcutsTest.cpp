#include "app/Shortcuts.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(Shortcuts, TheTextHasFifteenLinesAfterTheTwoLineBreaksOfTheIntroduction) {
    const QStringList halves = Shortcuts::informativeText().split("\n\n");
    ASSERT_EQ(halves.size(), 2);
    EXPECT_EQ(halves[0], "⌃ es la tecla Control (abajo a la izquierda del teclado). ⌃G funciona siempre; los demás, "
                         "mientras grabas.");
    const QStringList lines = halves[1].split("\n");
    ASSERT_EQ(lines.size(), 15);
    for (const QString& line : lines) {
        EXPECT_EQ(line.count('\t'), 1) << line.toStdString();
    }
}

TEST(Shortcuts, EachRowStandsInItsPlace) {
    const QStringList lines = Shortcuts::informativeText().split("\n\n")[1].split("\n");
    EXPECT_EQ(lines, QStringList({"⌃G\tEmpezar o terminar la grabación", "⌃P\tPausar o reanudar", "⌃M\tMarcador",
                                  "⌃K\tMaterial de la clase", "⌃T\tGuion (teleprompter): mostrar, empezar o pausar",
                                  "⌃D\tDibujar sobre la pantalla", "⌃B\tMostrar u ocultar la quadrel",
                                  "⌃C\tCámara completa ↔ burbuja",
                                  "⌃1 … ⌃4\tVistas: pantalla y burbuja · solo yo · yo al lado · yo en columna",
                                  "⌃Z\tZoom donde está el mouse / volver", "⌃+  ⌃−\tAcercar o alejar un paso",
                                  "⌃A\tZoom a un área", "⌃F\tFoco alrededor del mouse", "⌃R\tGrabar solo una zona",
                                  "⌥ + pellizco\tZoom continuo con el trackpad"}));
}

TEST(Shortcuts, ShowingBringsTheApplicationToTheFrontFirst) {
    QStringList calls;
    Shortcuts::show([&] { calls << "toFront"; },
                    [&](const QString& message, const QString& informative, const QStringList& buttons) {
                        EXPECT_EQ(informative, Shortcuts::informativeText());
                        calls << message << buttons;
                    });
    EXPECT_EQ(calls, QStringList({"toFront", "Atajos de Velmo Studio", "Listo"}));
}

} // namespace
} // namespace velmo
