#include "app/ThirdPartyNotices.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmo {

std::optional<QString> thirdPartyNotices(const QString& programFolder) {
    const QString name = QStringLiteral("THIRD_PARTY_NOTICES.txt");
    for (const QString& place : {QString(), QStringLiteral("../share/velmo-studio/")}) {
        const QString file = QDir::cleanPath(programFolder + u'/' + place + name);
        if (QFileInfo(file).isFile()) {
            return file;
        }
    }
    const QString file =
        QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("velmo-studio/") + name);
    return file.isEmpty() ? std::nullopt : std::optional(file);
}

} // namespace velmo
