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
    const bool isPlain = text.toStdString() == name && !text.startsWith(QChar(u'\0'));
    return isPlain ? text : QChar(u'\0') + QString::fromLatin1(name.data(), qsizetype(name.size()));
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
    for (const auto& marker : json.toArray()) {
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
    for (const auto& title : json.toArray()) {
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

/// The object behind the name that ends before `at`: where it begins, -1 when there is none.
qsizetype valueAfter(const QByteArray& json, qsizetype at) {
    const auto isBetween = [](char c) { return c == ':' || std::isspace(static_cast<unsigned char>(c)) != 0; };
    const qsizetype nameEnd = at;
    while (at < json.size() && isBetween(json[at])) {
        ++at;
    }
    return at > nameEnd && at < json.size() && json[at] == '{' ? at : -1;
}

/// Tries every quotation mark as the beginning of a `"name": {...}` that can be read by itself: behind damage nobody
/// knows which marks open a text and which close one.
MetaByName entriesOfDamaged(const QByteArray& json) {
    MetaByName entries;
    for (qsizetype at = json.indexOf('"'); at >= 0;) {
        const qsizetype nameEnd = endOfString(json, at);
        const qsizetype value = nameEnd < 0 ? -1 : valueAfter(json, nameEnd);
        const qsizetype end = value < 0 ? -1 : endOfObject(json, value);
        const std::size_t before = entries.size();
        if (end > 0) {
            takeEntries(QJsonDocument::fromJson('{' + json.mid(at, end - at) + '}').object(), entries);
        }
        at = json.indexOf('"', entries.size() > before ? end : at + 1);
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
