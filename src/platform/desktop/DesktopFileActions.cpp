#include "platform/desktop/DesktopFileActions.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QUrl>

#include <memory>

namespace velmo {
namespace {

QString textOf(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}
QUrl urlOf(const std::filesystem::path& path) {
    return QUrl::fromLocalFile(textOf(path));
}

void startOpener(const QString& target) {
    QProcess::startDetached(QStringLiteral("xdg-open"), {target});
}

} // namespace

Result<void> DesktopFileActions::moveToTrash(const std::filesystem::path& file) {
    QFile moved(textOf(file));
    if (moved.moveToTrash()) {
        return {};
    }
    return Error{"QFile", moved.error(), moved.errorString().toStdString()};
}

void DesktopFileActions::reveal(const std::filesystem::path& file) {
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList{QString::fromUtf8(urlOf(file).toEncoded())}, QString()});
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, file](QDBusPendingCallWatcher* done) {
        if (done->isError()) { // no such file manager here
            open(file.parent_path());
        }
        done->deleteLater();
    });
}

void DesktopFileActions::copyToClipboard(const std::filesystem::path& file) {
    const QUrl url = urlOf(file);
    auto data = std::make_unique<QMimeData>();
    data->setUrls({url});
    data->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + url.toEncoded());
    QGuiApplication::clipboard()->setMimeData(data.release()); // Qt owns it
}

void DesktopFileActions::open(const std::filesystem::path& fileOrFolder) {
    startOpener(textOf(fileOrFolder));
}

void DesktopFileActions::openAddress(const std::string& url) {
    startOpener(QString::fromStdString(url));
}

} // namespace velmo
