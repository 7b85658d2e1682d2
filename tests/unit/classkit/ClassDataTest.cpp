#include "classkit/ClassData.h"

#include "SomeClass.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::someClass;

TEST(ClassData, ComesBackAsItWasWritten) {
    const ClassData data = someClass();
    EXPECT_EQ(ClassData::fromJson(data.toJson()), data);
    EXPECT_EQ(ClassData::fromJson(ClassData().toJson()), ClassData());
}

TEST(ClassData, WritesCopiesAsAFlatListAndLeavesOutAbsentPlaces) {
    const ClassData data = someClass();
    const QJsonObject json = QJsonDocument::fromJson(data.toJson()).object();
    EXPECT_EQ(json["copied"],
              (QJsonArray{data.items[0].id.toString(QUuid::WithoutBraces), QStringLiteral("Material/guía.pdf")}));
    EXPECT_FALSE(json["chapters"][0].toObject().contains("location"));
    EXPECT_EQ(json["chapters"][1]["location"], QJsonValue("https://a.b"));
}

TEST(ClassData, LackingAnyPartIsUnreadable) {
    for (const char* key : {"video", "items", "chapters", "copied"}) {
        QJsonObject json = QJsonDocument::fromJson(someClass().toJson()).object();
        json.remove(QLatin1String(key));
        EXPECT_EQ(ClassData::fromJson(QJsonDocument(json).toJson()), std::nullopt) << key;
    }
    EXPECT_EQ(ClassData::fromJson("{\"video\": \"a.mp4\", \"items\""), std::nullopt);
}

TEST(ClassData, AListOfCopiesWithAnOddEndIsUnreadable) {
    QJsonObject json = QJsonDocument::fromJson(someClass().toJson()).object();
    json["copied"] = QJsonArray{json["copied"][0]};
    EXPECT_EQ(ClassData::fromJson(QJsonDocument(json).toJson()), std::nullopt);
}

} // namespace
} // namespace velmo
