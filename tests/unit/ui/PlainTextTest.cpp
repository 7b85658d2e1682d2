#include "ui/PlainText.h"

#include "ui/TextArea.h"
#include "ui/TextField.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>

namespace velmo {
namespace {

TEST(PlainText, OneLineHasNoBreaksNoControlsAndNoMarksThatTurnTheText) {
    EXPECT_EQ(PlainText::singleLine(QStringLiteral("a\r\nb\nc\td\u2028e\u0001f"), 100), QStringLiteral("a b c d e f"));
    EXPECT_EQ(PlainText::singleLine(QStringLiteral("x\u202Ey\u2066z\uFEFF\uFFFC"), 100), QStringLiteral("xyz"));
    EXPECT_EQ(PlainText::singleLine(QString(), 100), QString());
}

TEST(PlainText, LinesKeepTheirBreaksAndTabs) {
    EXPECT_EQ(PlainText::lines(QStringLiteral("a\r\nb\rc\u2029d\te\u0007"), 100), QStringLiteral("a\nb\nc\nd\te"));
}

TEST(PlainText, CharactersOutsideTheBasicPlaneAreWholeOrGone) {
    const QString bubble = QString::fromUcs4(U"\U0001FAE7");
    ASSERT_EQ(bubble.size(), 2);
    EXPECT_EQ(PlainText::singleLine(QStringLiteral("a") + bubble, 3), QStringLiteral("a") + bubble);
    EXPECT_EQ(PlainText::singleLine(QStringLiteral("a") + bubble, 2), QStringLiteral("a"));
    EXPECT_EQ(PlainText::singleLine(bubble.left(1) + QStringLiteral("b"), 10), QStringLiteral("b"));
}

TEST(PlainText, AVeryLongTextIsCut) {
    EXPECT_EQ(PlainText::singleLine(QString(1'000'000, u'x'), 80).size(), 80);
}

TEST(TextField, WhatIsInsertedIsPlainAndTheCursorStaysWhereItWas) {
    TextField field(QStringLiteral("Nombre"));
    field.setText(QStringLiteral("fin"));
    field.setCursorPosition(0);
    field.insert(QStringLiteral("uno\r\ndos\n"));
    EXPECT_EQ(field.text(), QStringLiteral("uno dos fin"));
    EXPECT_EQ(field.cursorPosition(), 8);
}

TEST(TextArea, GrowsWithItsTextUpToALimit) {
    TextArea area(QStringLiteral("Guion"));
    const int least = area.minimumHeight();
    area.setText(QStringLiteral("a\n").repeated(5));
    EXPECT_GT(area.minimumHeight(), least);
    area.setText(QStringLiteral("a\n").repeated(30));
    const int most = area.minimumHeight();
    area.setText(QStringLiteral("a\n").repeated(300));
    EXPECT_EQ(area.minimumHeight(), most);
    area.setText(QString());
    EXPECT_EQ(area.minimumHeight(), least);
}

} // namespace
} // namespace velmo
