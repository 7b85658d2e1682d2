#include "platform/desktop/QtDisplayReconfiguration.h"

#include "platform/desktop/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo {

QtDisplayReconfiguration::QtDisplayReconfiguration() {
    for (QScreen* screen : QGuiApplication::screens()) {
        watch(screen);
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        report(screen, kAdded);
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen*) { report(nullptr, kRemoved); });
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this,
            [this](QScreen* screen) { report(screen, kSetMain); });
}

void QtDisplayReconfiguration::registerCallback(Callback callback) {
    callbacks_.push_back(std::move(callback));
}

void QtDisplayReconfiguration::watch(QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, [this, screen] { report(screen, kMoved | kSetMode); });
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, [this, screen] { report(screen, kSetMode); });
}

void QtDisplayReconfiguration::report(const QScreen* screen, std::uint32_t flags) {
    const std::uint32_t id = screen != nullptr ? QtScreens::describe(*screen).displayID : 0;
    for (const Callback& callback : callbacks_) {
        callback(id, flags);
    }
}

} // namespace velmo
