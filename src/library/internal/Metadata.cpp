#include "library/internal/Metadata.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cctype>
#include <utility>

namespace velmo::internal {

namespace {

QString keyFromName(const std::string& name) {
    const QString text = QString::fromStdString(name);
    return text.toStdString() == name ? text : QChar(u'\0') + QString::fromLatin1(name.data(), qsizetype(name.size()));
}

std::string nameFromKey(const QString& key) {
    return key.startsWith(QChar(u'\0')) ? key.mid(1).toLatin1().toStdString() : key.toStdString();
}

QJsonObject jsonFromEntry(const Meta& entry) {
    QJsonArray markers;
    for (const double marker : entry.markers) {
        markers.append(marker);
    }
    QJsonObject object{{QStringLiteral("duration"), entry.duration}, {QStringLiteral("markers"), markers}};
    if (entry.titles) {
        object.insert(QStringLiteral("titles"), QJsonArray::fromStringList(*entry.titles));
    }
    if (entry.driveLink) {
        object.insert(QStringLiteral("driveLink"), *entry.driveLink);
    }
    return object;
}

bool isAbsent(const QJsonValue& json) {
    return json.isUndefined() || json.isNull();
}

bool readMarkers(const QJsonValue& json, std::vector<double>& markers) {
    for (const QJsonValue& marker : json.toArray()) {
        if (!marker.isDouble()) {
            return false;
        }
        markers.push_back(marker.toDouble());
    }
    return json.isArray();
}

bool readTitles(const QJsonValue& json, std::optional<QStringList>& titles) {
    if (isAbsent(json)) {
        return true;
    }
    titles.emplace();
    for (const QJsonValue& title : json.toArray()) {
        if (!title.isString()) {
            return false;
        }
        titles->append(title.toString());
    }
    return json.isArray();
}

bool readLink(const QJsonValue& json, std::optional<QString>& link) {
    if (json.isString()) {
        link = json.toString();
    }
    return isAbsent(json) || json.isString();
}

std::optional<Meta> entryFromJson(const QJsonValue& json) {
    const QJsonValue duration = json[u"duration"];
    Meta entry;
    entry.duration = duration.toDouble();
    const bool usable = duration.isDouble() && readMarkers(json[u"markers"], entry.markers) &&
                        readTitles(json[u"titles"], entry.titles) && readLink(json[u"driveLink"], entry.driveLink);
    return usable ? std::optional(std::move(entry)) : std::nullopt;
}

/// False when there was something else among them.
bool takeEntries(const QJsonObject& object, MetaByName& entries) {
    bool areAll = true;
    for (auto each = object.begin(); each != object.end(); ++each) {
        if (auto entry = entryFromJson(each.value())) {
            entries.insert_or_assign(nameFromKey(each.key()), std::move(*entry));
        } else {
            areAll = false;
        }
    }
    return areAll;
}

/// Behind the string that begins at `at`; -1 when it does not end.
qsizetype endOfString(const QByteArray& json, qsizetype at) {
    for (++at; at < json.size(); ++at) {
        if (json[at] == '\\') {
            ++at;
        } else if (json[at] == '"') {
            return at + 1;
        }
    }
    return -1;
}

/// Behind the object that begins at `at`; -1 when it does not end.
qsizetype endOfObject(const QByteArray& json, qsizetype at) {
    int depth = 0;
    while (at >= 0 && at < json.size()) {
        if (json[at] == '"') {
            at = endOfString(json, at);
            continue;
        }
        depth += json[at] == '{' ? 1 : json[at] == '}' ? -1 : 0;
        ++at;
        if (depth == 0) {
            return at;
        }
    }
    return -1;
}

/// Looks for each `"name": {...}` below the outermost brace and reads it by itself.
MetaByName entriesOfDamaged(const QByteArray& json) {
    MetaByName entries;
    qsizetype at = json.indexOf('"');
    while (at >= 0) {
        const qsizetype nameEnd = endOfString(json, at);
        if (nameEnd < 0) {
            break;
        }
        qsizetype value = nameEnd;
        while (value < json.size() && (json[value] == ':' || std::isspace(static_cast<unsigned char>(json[value])))) {
            ++value;
        }
        const bool opens = value > nameEnd && value < json.size() && json[value] == '{';
        const qsizetype end = opens ? endOfObject(json, value) : -1;
        if (end > 0) {
            takeEntries(QJsonDocument::fromJson('{' + json.mid(at, end - at) + '}').object(), entries);
        }
        at = json.indexOf('"', end > 0 ? end : nameEnd);
    }
    return entries;
}

} // namespace

QByteArray jsonFromMeta(const MetaByName& meta) {
    QJsonObject object;
    for (const auto& [name, entry] : meta) {
        object.insert(keyFromName(name), jsonFromEntry(entry));
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

MetaReading metaFromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) {
        return {entriesOfDamaged(json), false};
    }
    MetaReading reading;
    reading.isWhole = takeEntries(document.object(), reading.entries);
    return reading;
}

} // namespace velmo::internal
