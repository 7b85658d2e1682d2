#include "platform/desktop/SettingsPrograms.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace velmo {
namespace {

using SettingsPrograms::Page;

class SettingsProgramsTest : public testing::Test {
protected:
    void put(const std::string& name, const std::string& rest) {
        std::ofstream(folder.path() / (name + ".desktop")) << "[Desktop Entry]\nName=x\n" << rest << "\n";
    }
    std::optional<QStringList> commandFor(Page page, const QString& desktop = QStringLiteral("GNOME")) {
        return SettingsPrograms::commandFor(page, {QString::fromStdString(folder.path().string())}, desktop);
    }

    test::TemporaryFolder folder;
};

TEST_F(SettingsProgramsTest, ADesktopWithoutSettingsHasNone) {
    EXPECT_EQ(commandFor(Page::camera), std::nullopt);
}

TEST_F(SettingsProgramsTest, TheMostFittingPageIsTaken) {
    put("gnome-control-center", "Exec=/bin/sh");
    EXPECT_EQ(commandFor(Page::camera), QStringList{"/bin/sh"});
    put("gnome-camera-panel", "Exec=/bin/sh -c \"uno dos\" %U\nOnlyShowIn=GNOME;Unity;");
    EXPECT_EQ(commandFor(Page::camera), QStringList({"/bin/sh", "-c", "uno dos"}));
    EXPECT_EQ(commandFor(Page::camera, QStringLiteral("ubuntu:gnome")), QStringList({"/bin/sh", "-c", "uno dos"}));
}

TEST_F(SettingsProgramsTest, WhatIsForAnotherDesktopOrHiddenOrNotInstalledIsPassedOver) {
    put("gnome-sound-panel", "Exec=/bin/sh\nOnlyShowIn=GNOME;");
    put("kcm_pulseaudio", "Exec=/no/such/program");
    put("mate-volume-control", "Exec=/bin/sh\nHidden=true");
    put("pavucontrol-qt", "Exec=/bin/sh\nNotShowIn=XFCE;");
    put("pavucontrol", "Exec=/bin/sh -x\n[Desktop Action other]\nExec=/bin/false");
    EXPECT_EQ(commandFor(Page::sound, QStringLiteral("XFCE")), QStringList({"/bin/sh", "-x"}));
}

TEST_F(SettingsProgramsTest, AFileThatIsNoneIsPassedOver) {
    std::ofstream(folder.path() / "pavucontrol.desktop") << "\xff\xfe no entry at all";
    EXPECT_EQ(commandFor(Page::sound), std::nullopt);
}

} // namespace
} // namespace velmo
