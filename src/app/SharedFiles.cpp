#include "app/SharedFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmo {

std::optional<QString> sharedFile(const QString& programFolder, const QString& name) {
    for (const QString& place : {QString(), QStringLiteral("../share/velmo-studio/")}) {
        const QString file = QDir::cleanPath(programFolder + u'/' + place + name);
        if (QFileInfo::exists(file)) {
            return file;
        }
    }
    for (const auto kind : {QStandardPaths::LocateFile, QStandardPaths::LocateDirectory}) {
        const QString file = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                    QStringLiteral("velmo-studio/") + name, kind);
        if (!file.isEmpty()) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace velmo
