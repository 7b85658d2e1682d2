#include "app/ProgramFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmo {

std::optional<QString> programFile(const QString& programFolder, const QString& name) {
    for (const QString& place : {QString(), QStringLiteral("../share/velmo-studio/")}) {
        const QString file = QDir::cleanPath(programFolder + u'/' + place + name);
        if (QFileInfo::exists(file)) {
            return file;
        }
    }
    const QString file = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                QStringLiteral("velmo-studio/") + name, QStandardPaths::LocateFile);
    const QString folder = QStandardPaths::locate(
        QStandardPaths::GenericDataLocation, QStringLiteral("velmo-studio/") + name, QStandardPaths::LocateDirectory);
    return !file.isEmpty() ? std::optional(file) : !folder.isEmpty() ? std::optional(folder) : std::nullopt;
}

} // namespace velmo
