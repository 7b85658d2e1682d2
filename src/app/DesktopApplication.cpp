#include "app/DesktopApplication.h"

#include "platform/desktop/SettingsPrograms.h"

#include <QApplication>
#include <QWidget>

namespace velmo {
void DesktopApplication::toFront() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)) {
            window->raise();
            window->activateWindow();
        }
    }
}

void DesktopApplication::openScreenCaptureSettings() {
    SettingsPrograms::open(SettingsPrograms::Page::screen);
}

} // namespace velmo
