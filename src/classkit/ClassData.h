#pragma once

#include "classkit/Chapter.h"
#include "classkit/KitItem.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <map>
#include <optional>
#include <vector>

namespace velmo {

/// The record of a class folder.
struct ClassData {
    QString video;                   ///< file name with extension
    std::vector<KitItem> items;      ///< the kit as it stood at the end of the recording
    std::vector<Chapter> chapters;   ///< in order of making
    std::map<QUuid, QString> copied; ///< by item: its path relative to the class folder
    friend bool operator==(const ClassData&, const ClassData&) = default;

    /// One JSON object. `copied` is a flat array in which keys and values alternate.
    QByteArray toJson() const;
    /// Absent when it is not JSON or any required part is missing or of another type.
    static std::optional<ClassData> fromJson(const QByteArray& json);
};

} // namespace velmo
