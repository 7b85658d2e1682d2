#include "library/internal/Metadata.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

} // namespace

QByteArray jsonFromMeta(const MetaByName& meta) {
    QJsonObject object;
    for (const auto& [name, entry] : meta) {
        object.insert(keyFromName(name), jsonFromEntry(entry));
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<MetaByName> metaFromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject object = document.object();
    MetaByName meta;
    for (auto each = object.begin(); each != object.end(); ++each) {
        auto entry = entryFromJson(each.value());
        if (!entry) {
            return std::nullopt;
        }
        meta.emplace(nameFromKey(each.key()), std::move(*entry));
    }
    return meta;
}

} // namespace velmo::internal
