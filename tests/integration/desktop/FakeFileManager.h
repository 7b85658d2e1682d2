#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace velmo::test {

/// A file manager on the session's bus, as another program.
class FakeFileManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManager();
    ~FakeFileManager() override;

    QStringList shown;

public slots:
    void ShowItems(const QStringList& uris, const QString& startup);

private:
    QDBusConnection bus_;
};

} // namespace velmo::test
