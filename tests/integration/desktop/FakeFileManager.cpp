#include "FakeFileManager.h"

namespace velmo::test {

FakeFileManager::FakeFileManager() : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "file-manager")) {
    bus_.registerObject("/org/freedesktop/FileManager1", this, QDBusConnection::ExportAllSlots);
    bus_.registerService("org.freedesktop.FileManager1");
}

FakeFileManager::~FakeFileManager() {
    bus_.unregisterService("org.freedesktop.FileManager1");
    QDBusConnection::disconnectFromBus("file-manager");
}

void FakeFileManager::ShowItems(const QStringList& uris, const QString&) {
    shown << uris;
}

} // namespace velmo::test
