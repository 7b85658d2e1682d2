#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmo::internal {

/// What a video file cannot tell of itself.
struct Meta {
    double duration = 0; ///< seconds; 0 means not yet known
    std::vector<double> markers;
    std::optional<QStringList> titles;
    std::optional<QString> driveLink;
    friend bool operator==(const Meta&, const Meta&) = default;
};

/// By file name with extension, as the file system spells it.
using MetaByName = std::map<std::string, Meta>;

/// One JSON object, keyed by file name. A name that is no UTF-8 is kept byte by byte behind a NUL, which no file
/// name can contain.
QByteArray jsonFromMeta(const MetaByName& meta);

/// What could be made of a file.
struct MetaReading {
    MetaByName entries;   ///< those that are whole
    bool isWhole = false; ///< there was nothing else in it
};

/// An entry that lacks "duration" or "markers", or has another type, is left out; of a text that is no JSON, because
/// it was cut off or garbled, the entries before and after the damage are taken.
MetaReading metaFromJson(const QByteArray& json);

} // namespace velmo::internal
