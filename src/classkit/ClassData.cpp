#include "classkit/ClassData.h"

#include "classkit/KitJson.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velmo {

namespace {

QJsonArray jsonFromCopied(const std::map<QUuid, QString>& copied) {
    QJsonArray array;
    for (const auto& [id, path] : copied) {
        array.append(id.toString(QUuid::WithoutBraces));
        array.append(path);
    }
    return array;
}

std::optional<std::map<QUuid, QString>> copiedFromJson(const QJsonValue& json) {
    const QJsonArray array = json.toArray();
    if (!json.isArray() || array.size() % 2 != 0) {
        return std::nullopt;
    }
    std::map<QUuid, QString> copied;
    for (qsizetype i = 0; i < array.size(); i += 2) {
        const auto id = QUuid::fromString(array[i].toString());
        if (id.isNull() || !array[i + 1].isString()) {
            return std::nullopt;
        }
        copied[id] = array[i + 1].toString();
    }
    return copied;
}

} // namespace

QByteArray ClassData::toJson() const {
    return QJsonDocument(QJsonObject{
                             {QStringLiteral("video"), video},
                             {QStringLiteral("items"), jsonFromItems(items)},
                             {QStringLiteral("chapters"), jsonFromChapters(chapters)},
                             {QStringLiteral("copied"), jsonFromCopied(copied)},
                         })
        .toJson(QJsonDocument::Compact);
}

std::optional<ClassData> ClassData::fromJson(const QByteArray& json) {
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const QJsonValue video = object.value(u"video");
    auto items = itemsFromJson(object.value(u"items"));
    auto chapters = chaptersFromJson(object.value(u"chapters"));
    auto copied = copiedFromJson(object.value(u"copied"));
    if (!video.isString() || !items || !chapters || !copied) {
        return std::nullopt;
    }
    return ClassData{video.toString(), std::move(*items), std::move(*chapters), std::move(*copied)};
}

} // namespace velmo
