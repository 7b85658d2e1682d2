#include "app/DesktopApplication.h"

#include <QApplication>
#include <QProcess>
#include <QStringList>
#include <QWidget>

namespace velmo {
namespace {

struct SettingsProgram {
    const char* program;
    const char* page; ///< may be empty
};
constexpr SettingsProgram kSettingsPrograms[] = {
    {"gnome-control-center", "privacy"}, {"systemsettings", ""}, {"xfce4-settings-manager", ""}};

} // namespace

void DesktopApplication::toFront() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)) {
            window->raise();
            window->activateWindow();
        }
    }
}

void DesktopApplication::openScreenCaptureSettings() {
    for (const SettingsProgram& settings : kSettingsPrograms) {
        const QStringList arguments =
            *settings.page != '\0' ? QStringList(QString::fromLatin1(settings.page)) : QStringList();
        if (QProcess::startDetached(QString::fromLatin1(settings.program), arguments)) {
            return;
        }
    }
}

} // namespace velmo
