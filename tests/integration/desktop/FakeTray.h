#pragma once

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QThread>

#include <mutex>

namespace velmo::test {

/// A desktop's tray: the watcher with which status items register. It answers from a thread of its own, as the tray of
/// another program would while this one waits for it.
class FakeTray final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ version)

public:
    FakeTray();
    ~FakeTray() override;

    bool hasHost() const { return true; }
    int version() const { return 0; }

    /// Bus name of the newest item; empty before there is one. Any thread.
    QString item() const;

public slots:
    void RegisterStatusNotifierItem(const QString& name);
    void RegisterStatusNotifierHost(const QString& name);

private:
    QThread thread_;
    mutable std::mutex lock_;
    // protected by lock
    QString item_;
};

} // namespace velmo::test
