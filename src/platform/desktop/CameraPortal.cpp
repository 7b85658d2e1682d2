#include "platform/desktop/CameraPortal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>

namespace velmo {

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kToken = QStringLiteral("velmo_camera");

/// Where the answer to a request comes, by the portal's rule: listened to before asking, or it may be missed.
QString answerPath(const QDBusConnection& bus) {
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return kPath + QStringLiteral("/request/%1/%2").arg(sender, kToken);
}

} // namespace

bool CameraPortal::isInUse() {
    return QFile::exists(QStringLiteral("/.flatpak-info"));
}

void CameraPortal::request(std::function<void(bool)> answered) {
    waiting_.push_back(std::move(answered));
    if (waiting_.size() > 1) {
        return; // the question stands already
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(kService, answerPath(bus), QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
                this, SLOT(respond(unsigned, QVariantMap)));
    auto call = QDBusMessage::createMethodCall(kService, kPath, QStringLiteral("org.freedesktop.portal.Camera"),
                                               QStringLiteral("AccessCamera"));
    call.setArguments({QVariantMap{{QStringLiteral("handle_token"), kToken}}});
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
        if (done->isError()) {
            answer(false);
        }
        done->deleteLater();
    });
}

void CameraPortal::respond(unsigned response, const QVariantMap&) {
    answer(response == 0);
}

void CameraPortal::answer(bool permitted) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.disconnect(kService, answerPath(bus), QStringLiteral("org.freedesktop.portal.Request"),
                   QStringLiteral("Response"), this, SLOT(respond(unsigned, QVariantMap)));
    for (const auto& each : std::exchange(waiting_, {})) {
        each(permitted);
    }
}

} // namespace velmo
