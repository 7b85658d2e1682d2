#include "FakeTray.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace velmo::test {

FakeTray::FakeTray() {
    moveToThread(&thread_);
    thread_.start();
    QMetaObject::invokeMethod(
        this,
        [this] {
            auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tray");
            bus.registerObject("/StatusNotifierWatcher", this,
                               QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
            bus.registerService("org.kde.StatusNotifierWatcher");
        },
        Qt::BlockingQueuedConnection);
}

FakeTray::~FakeTray() {
    QMetaObject::invokeMethod(
        this, [] { QDBusConnection::disconnectFromBus("tray"); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

QString FakeTray::item() const {
    const std::lock_guard guard(lock_);
    return item_;
}

void FakeTray::RegisterStatusNotifierItem(const QString&) {
    const std::lock_guard guard(lock_);
    item_ = message().service();
}

void FakeTray::RegisterStatusNotifierHost(const QString&) {}

} // namespace velmo::test
