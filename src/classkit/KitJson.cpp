#include "classkit/KitJson.h"

#include <QJsonObject>

#include <array>

namespace velmo {

namespace {

struct KindName {
    KitItem::Kind kind;
    const char* raw;
};

constexpr std::array kKinds{
    KindName{KitItem::Kind::file, "file"},
    KindName{KitItem::Kind::link, "link"},
    KindName{KitItem::Kind::video, "video"},
};

std::optional<KitItem::Kind> kindFromRaw(const QString& raw) {
    for (const KindName& name : kKinds) {
        if (raw == QLatin1String(name.raw)) {
            return name.kind;
        }
    }
    return std::nullopt;
}

std::optional<KitItem> itemFromJson(const QJsonValue& json) {
    const QJsonValue title = json[u"title"];
    const QJsonValue location = json[u"location"];
    const auto id = QUuid::fromString(json[u"id"].toString());
    const auto kind = kindFromRaw(json[u"kind"].toString());
    if (id.isNull() || !kind || !title.isString() || !location.isString()) {
        return std::nullopt;
    }
    return KitItem{id, *kind, title.toString(), location.toString()};
}

std::optional<Chapter> chapterFromJson(const QJsonValue& json) {
    const QJsonValue time = json[u"time"];
    const QJsonValue title = json[u"title"];
    const QJsonValue location = json[u"location"];
    const bool without = location.isUndefined() || location.isNull();
    if (!time.isDouble() || !title.isString() || (!without && !location.isString())) {
        return std::nullopt;
    }
    return Chapter{time.toDouble(), title.toString(), without ? std::nullopt : std::optional(location.toString())};
}

template <typename T>
std::optional<std::vector<T>> listFromJson(const QJsonValue& json, std::optional<T> (*read)(const QJsonValue&)) {
    if (!json.isArray()) {
        return std::nullopt;
    }
    std::vector<T> list;
    const QJsonArray array = json.toArray();
    for (const auto& entry : array) {
        auto value = read(entry);
        if (!value) {
            return std::nullopt;
        }
        list.push_back(std::move(*value));
    }
    return list;
}

} // namespace

QJsonArray jsonFromItems(const std::vector<KitItem>& items) {
    QJsonArray array;
    for (const KitItem& item : items) {
        array.append(QJsonObject{
            {QStringLiteral("id"), item.id.toString(QUuid::WithoutBraces)},
            {QStringLiteral("kind"), QLatin1String(kKinds[static_cast<std::size_t>(item.kind)].raw)},
            {QStringLiteral("title"), item.title},
            {QStringLiteral("location"), item.location},
        });
    }
    return array;
}

std::optional<std::vector<KitItem>> itemsFromJson(const QJsonValue& json) {
    return listFromJson(json, itemFromJson);
}

QJsonArray jsonFromChapters(const std::vector<Chapter>& chapters) {
    QJsonArray array;
    for (const Chapter& chapter : chapters) {
        QJsonObject object{{QStringLiteral("time"), chapter.time}, {QStringLiteral("title"), chapter.title}};
        if (chapter.location) {
            object.insert(QStringLiteral("location"), *chapter.location);
        }
        array.append(object);
    }
    return array;
}

std::optional<std::vector<Chapter>> chaptersFromJson(const QJsonValue& json) {
    return listFromJson(json, chapterFromJson);
}

} // namespace velmo
