#include "FakeFindings.h"
#include "panels/WelcomeWindow.h"
#include "panels/welcome/PermissionRow.h"
#include "panels/welcome/PermissionWords.h"
#include "support/NothingCut.h"
#include "ui/Button.h"
#include "unit/session/World.h"

#include <QGuiApplication>

namespace velmo {
namespace {

using Media = DevicePermissions::Media;
using Pane = Permissions::Pane;

class WelcomeTest : public test::World {
protected:
    Permissions::Services services() {
        return {capture,
                permissions,
                findings,
                timers,
                [this](Pane pane) { opened.push_back(pane); },
                [this](Pane) { return hasSettings; }};
    }
    std::unique_ptr<WelcomeWindow> shown() {
        auto window = std::make_unique<WelcomeWindow>(services(), prefs, [this] { ++begun; });
        window->show();
        settle();
        return window;
    }
    void settle() {
        findings.conclude();
        test::settle();
    }
    static PermissionRow& row(const QWidget& window, const char* title) {
        for (PermissionRow* each : window.findChildren<PermissionRow*>()) {
            if (each->accessibleName() == QString::fromUtf8(title)) {
                return *each;
            }
        }
        throw std::runtime_error(title);
    }
    /// What can be pressed in the row; null for nothing.
    static Button* buttonOf(const QWidget& row) {
        for (Button* each : row.findChildren<Button*>()) {
            if (!each->isHidden()) {
                return each;
            }
        }
        return nullptr;
    }

    test::FakeFindings findings;
    std::vector<Pane> opened;
    bool hasSettings = true;
    int begun = 0;
};

TEST_F(WelcomeTest, NoTextIsCutHoweverLargeTheDesktopWantsIt) {
    for (const double factor : test::kTextScales) {
        const test::LargerText larger(factor);
        const auto window = shown();
        EXPECT_EQ(test::cutTexts(*window), QStringList()) << factor;
        EXPECT_EQ(window->card().height() >= 600 && window->card().width() >= 620, true) << factor;
    }
}

TEST_F(WelcomeTest, EverythingIsUnknownUntilItIsFoundOut) {
    const Permissions permissionsNow(services());
    EXPECT_EQ(permissionsNow.screen(), PermissionState::unknown);
    EXPECT_EQ(permissionsNow.camera(), PermissionState::unknown);
    EXPECT_EQ(permissionsNow.microphone(), PermissionState::unknown);
}

TEST_F(WelcomeTest, AScreenThatCanBeListedIsGrantedAndOneThatCannotIsDenied) {
    Permissions model(services());
    model.refresh();
    settle();
    EXPECT_EQ(model.screen(), PermissionState::granted);
    capture.errors[1] = Error{"test", 1, "no"};
    model.refresh();
    settle();
    EXPECT_EQ(model.screen(), PermissionState::denied);
}

TEST_F(WelcomeTest, ARestrictedCameraReadsAsDeniedAndLeadsToTheSettings) {
    permissions.video = 1;
    const auto window = shown();
    PermissionRow& cameraRow = row(*window, "Cámara");
    EXPECT_EQ(cameraRow.standing().state, PermissionState::denied);
    ASSERT_NE(buttonOf(cameraRow), nullptr);
    EXPECT_EQ(buttonOf(cameraRow)->text(), QStringLiteral("Abrir Ajustes"));
    buttonOf(cameraRow)->click();
    EXPECT_EQ(opened, std::vector<Pane>{Pane::camera});
}

TEST_F(WelcomeTest, AskingForTheScreenInVainOpensThePaneAtOnceAndLooksAgainSoon) {
    Permissions model(services());
    model.requestScreen();
    EXPECT_EQ(opened, std::vector<Pane>{Pane::screen});
    const int looks = findings.looks;
    advance(1.4);
    EXPECT_EQ(findings.looks, looks);
    advance(0.2);
    EXPECT_EQ(findings.looks, looks + 1);
}

TEST_F(WelcomeTest, RowsChangeWithoutAClickWhenTheProgramComesBack) {
    permissions.audio = 2;
    findings.audio = DeviceFinding::refused;
    const auto window = shown();
    EXPECT_EQ(row(*window, "Micrófono").standing().state, PermissionState::denied);
    permissions.audio = 3;
    findings.audio = DeviceFinding::granted;
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    settle();
    EXPECT_EQ(row(*window, "Micrófono").standing().state, PermissionState::granted);
    EXPECT_EQ(buttonOf(row(*window, "Micrófono")), nullptr);
}

TEST_F(WelcomeTest, WhatWasNotAskedYetIsAskedByItsButton) {
    permissions.video = 0;
    const auto window = shown();
    PermissionRow& cameraRow = row(*window, "Cámara");
    ASSERT_NE(buttonOf(cameraRow), nullptr);
    EXPECT_EQ(buttonOf(cameraRow)->text(), QStringLiteral("Permitir"));
    calls.clear();
    buttonOf(cameraRow)->click();
    EXPECT_EQ(count("permissions.request video"), 1);
    EXPECT_TRUE(opened.empty());
}

TEST_F(WelcomeTest, AMicrophoneThatOpensAndSaysNothingIsToldOf) {
    permissions.audio = 3;
    findings.audio = DeviceFinding::silent;
    const auto window = shown();
    const PermissionRow& shownRow = row(*window, "Micrófono");
    EXPECT_EQ(shownRow.standing().state, PermissionState::denied);
    EXPECT_FALSE(shownRow.standing().word.isEmpty());
}

TEST_F(WelcomeTest, NoButtonLeadsNowhere) {
    for (const PermissionState state : {PermissionState::denied, PermissionState::unknown}) {
        EXPECT_FALSE(PermissionWords::device(Media::video, state, DeviceFinding::absent, true).instead.isEmpty());
    }
    EXPECT_FALSE(PermissionWords::device(Media::audio, PermissionState::denied, DeviceFinding::refused, false)
                     .instead.isEmpty());
    EXPECT_FALSE(PermissionWords::screen(PermissionState::denied, false).instead.isEmpty());
    EXPECT_TRUE(PermissionWords::screen(PermissionState::denied, true).instead.isEmpty());
    EXPECT_TRUE(PermissionWords::device(Media::video, PermissionState::granted, DeviceFinding::granted, false)
                    .instead.isEmpty());
}

TEST_F(WelcomeTest, WithoutSettingsNothingIsOpened) {
    hasSettings = false;
    Permissions model(services());
    model.requestScreen();
    EXPECT_TRUE(opened.empty());
}

TEST_F(WelcomeTest, TheUserMayGoOnWithoutARight) {
    permissions.video = permissions.audio = 2;
    capture.errors[0] = Error{"test", 1, "no"};
    const auto window = shown();
    Button* start = nullptr;
    for (Button* each : window->findChildren<Button*>()) {
        start = each->text() == QStringLiteral("Empezar") ? each : start;
    }
    ASSERT_NE(start, nullptr);
    EXPECT_TRUE(start->isEnabled());
    start->click();
    EXPECT_TRUE(prefs.onboarded.value());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(begun, 1);
}

TEST_F(WelcomeTest, ClosingItIsNotBeginning) {
    const auto window = shown();
    window->close();
    EXPECT_FALSE(prefs.onboarded.value());
    EXPECT_EQ(begun, 0);
}

TEST_F(WelcomeTest, ALateAnswerAfterItsEndIsNobodys) {
    {
        Permissions model(services());
        model.refresh();
        model.requestScreen();
    }
    findings.conclude();
    test::settle();
    advance(2);
}

} // namespace
} // namespace velmo
