#include "panels/Alerts.h"

#include "ui/AlertDialog.h"
#include "ui/Button.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

namespace velmo {
namespace {

AlertDialog* shownDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<AlertDialog*>(window); dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

void press(const char* text) {
    for (Button* button : shownDialog()->findChildren<Button*>()) {
        if (button->text() == QString::fromUtf8(text)) {
            button->click();
            return;
        }
    }
    FAIL() << "no button " << text;
}

QCoro::Task<void> store(Alerts& alerts, int& answer) {
    const QStringList buttons{QStringLiteral("Sí"), QStringLiteral("No")};
    answer = co_await alerts.ask(QStringLiteral("¿Sigo?"), {}, buttons, true);
}

TEST(Alerts, AQuestionStandsUntilItIsAnsweredAndGivesTheButton) {
    Alerts alerts;
    int answer = -1;
    auto asking = store(alerts, answer);
    QApplication::processEvents();
    EXPECT_EQ(answer, -1);
    press("Sí");
    QApplication::processEvents();
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(shownDialog(), nullptr);
}

TEST(Alerts, ClosingAQuestionIsItsLastAnswer) {
    Alerts alerts;
    int answer = -1;
    auto asking = store(alerts, answer);
    shownDialog()->close();
    QApplication::processEvents();
    EXPECT_EQ(answer, 1);
}

TEST(Alerts, EscapeIsItsLastAnswerAlsoWhereTheDialogGoesAtOnce) {
    Alerts alerts;
    int answer = -1;
    auto asking = store(alerts, answer);
    QEventLoop running; // dialogs that are closed are deleted only while one runs
    QTimer::singleShot(0, &running, [] { QTest::keyClick(shownDialog(), Qt::Key_Escape); });
    QObject::connect(shownDialog(), &QObject::destroyed, &running, &QEventLoop::quit, Qt::QueuedConnection);
    running.exec();
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(shownDialog(), nullptr);
}

TEST(Alerts, AMessageIsOverWhenItIsAccepted) {
    Alerts alerts;
    auto telling = alerts.inform(QStringLiteral("Hecho"), QStringLiteral("Todo bien."));
    EXPECT_FALSE(telling.isReady());
    press("Aceptar");
    QApplication::processEvents();
    EXPECT_TRUE(telling.isReady());
}

} // namespace
} // namespace velmo
