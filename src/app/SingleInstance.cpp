#include "app/SingleInstance.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace velmo {

SingleInstance::SingleInstance(const QString& folder) : folder_(folder) {}

SingleInstance::~SingleInstance() {
    server_.reset(); // while the lock still keeps others from listening
    if (lock_ >= 0) {
        ::close(lock_);
    }
}

QString SingleInstance::standardFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

QString SingleInstance::path(const char* extension) const {
    return folder_ + QStringLiteral("/velmo-studio.") + QLatin1String(extension);
}

SingleInstance::Role SingleInstance::claim() {
    lock_ = ::open(QFile::encodeName(path("lock")).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock_ < 0) {
        return Role::first;
    }
    if (::flock(lock_, LOCK_EX | LOCK_NB) != 0) {
        ::close(lock_);
        lock_ = -1;
        return Role::later;
    }
    listen();
    return Role::first;
}

void SingleInstance::listen() {
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(path("socket")); // left by a process that was killed: the lock is ours
    connect(server_.get(), &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* caller = server_->nextPendingConnection()) {
            caller->disconnectFromServer();
            caller->deleteLater();
            emit reopenRequested();
        }
    });
    server_->listen(path("socket"));
}

bool SingleInstance::askToReopen(int milliseconds) const {
    QLocalSocket socket;
    socket.connectToServer(path("socket"), QLocalSocket::ReadOnly);
    return socket.waitForConnected(milliseconds) &&
           (socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(milliseconds));
}

} // namespace velmo
