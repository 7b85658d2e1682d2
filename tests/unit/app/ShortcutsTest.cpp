#include "app/Shortcuts.h"

#include "app/ShortcutsTable.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(Shortcuts, TheTextHasFifteenLinesAfterTheTwoLineBreaksOfTheIntroduction) {
    const QStringList halves = Shortcuts::informativeText({}).split("\n\n");
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
    const QStringList lines = Shortcuts::informativeText({}).split("\n\n")[1].split("\n");
    EXPECT_EQ(lines, QStringList({"⌃G\tEmpezar o terminar la grabación", "⌃P\tPausar o reanudar", "⌃M\tMarcador",
                                  "⌃K\tMaterial de la clase", "⌃T\tGuion (teleprompter): mostrar, empezar o pausar",
                                  "⌃D\tDibujar sobre la pantalla", "⌃B\tMostrar u ocultar la quadrel",
                                  "⌃C\tCámara completa ↔ burbuja",
                                  "⌃1 … ⌃4\tVistas: pantalla y burbuja · solo yo · yo al lado · yo en columna",
                                  "⌃Z\tZoom donde está el mouse / volver", "⌃+  ⌃−\tAcercar o alejar un paso",
                                  "⌃A\tZoom a un área", "⌃F\tFoco alrededor del mouse", "⌃R\tGrabar solo una zona",
                                  "⌥ + pellizco\tZoom continuo con el trackpad"}));
}

TEST(Shortcuts, TheChosenModifierStandsInThePlaceOfControl) {
    EXPECT_EQ(Shortcuts::introduction({ShortcutModifier::controlAlt}),
              QStringLiteral("⌃ es la tecla Control y ⌥ la tecla Alt (abajo a la izquierda del teclado). ⌃⌥G funciona "
                             "siempre; los demás, mientras grabas."));
    const QStringList lines = Shortcuts::informativeText({ShortcutModifier::super}).split("\n\n")[1].split("\n");
    EXPECT_EQ(lines[0], QStringLiteral("Super\u00A0G\tEmpezar o terminar la grabación"));
    EXPECT_EQ(lines[8].section('\t', 0, 0), QStringLiteral("Super\u00A01 … Super\u00A04"));
    EXPECT_EQ(lines[14].section('\t', 0, 0), QStringLiteral("⌥ + pellizco")) << "the mouse's combinations stay";
}

TEST(Shortcuts, AKeyThatAnotherProgramHoldsIsToldInItsRow) {
    const QStringList lines =
        Shortcuts::informativeText({ShortcutModifier::control, {9, 11, 22}}).split("\n\n")[1].split("\n");
    QStringList told;
    for (const QString& line : lines) {
        if (line.endsWith(QStringLiteral(" · La usa otro programa"))) {
            told << line.section('\t', 0, 0);
        }
    }
    EXPECT_EQ(told, QStringList({"⌃1 … ⌃4", "⌃+  ⌃−", "⌃F"}));
}

TEST(Shortcuts, EveryHotKeyStandsInOneRow) {
    std::vector<std::uint32_t> ids;
    for (const Shortcuts::Row& row : Shortcuts::list) {
        for (std::uint32_t id = row.firstID; id > 0 && id <= row.lastID; ++id) {
            ids.push_back(id);
        }
    }
    EXPECT_THAT(ids, testing::UnorderedElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 20, 21, 22, 23));
}

TEST(Shortcuts, TheTableHasRoomForTheNotes) {
    ShortcutsTable table;
    const QSize before = table.sizeHint();
    table.setState({ShortcutModifier::super, {1, 20}});
    EXPECT_GT(table.sizeHint().width(), before.width());
    EXPECT_EQ(table.sizeHint().height(), before.height());
    EXPECT_TRUE(table.accessibleDescription().contains(QStringLiteral("La usa otro programa")));
}

TEST(Shortcuts, ShowingBringsTheApplicationToTheFrontFirst) {
    QStringList calls;
    Shortcuts::show(
        {}, [&] { calls << "toFront"; },
        [&](const QString& message, const QString& informative, const QStringList& buttons) {
            EXPECT_EQ(informative, Shortcuts::informativeText({}));
            calls << message << buttons;
        });
    EXPECT_EQ(calls, QStringList({"toFront", "Atajos de Velmo Studio", "Listo"}));
}

} // namespace
} // namespace velmo
