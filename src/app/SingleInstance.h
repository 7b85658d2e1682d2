#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QLocalServer;

namespace velmo {

/// Makes the program one per user session: the first one holds a lock and listens, a later one asks it to come up.
/// The lock goes with the process, however that ends. Main thread.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    enum class Role { first, later };

    /// `folder` holds the lock and the socket; it must be the user's own.
    explicit SingleInstance(const QString& folder);
    ~SingleInstance() override;

    /// The user's runtime folder.
    static QString standardFolder();

    /// Takes the place of the first one if it is free. Without a usable folder every process is a first one.
    Role claim();
    /// Asks the first one to come up; waits for it at most `milliseconds`. Only in the role `later`.
    bool askToReopen(int milliseconds = 2000) const;

signals:
    /// A later start asked this one to come up.
    void reopenRequested();

private:
    void listen();
    QString path(const char* extension) const;

    QString folder_;
    int lock_ = -1;
    std::unique_ptr<QLocalServer> server_;
};

} // namespace velmo
