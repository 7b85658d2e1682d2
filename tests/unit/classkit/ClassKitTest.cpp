#include "classkit/ClassKit.h"

#include "support/MemoryDefaultsStore.h"
#include "support/TemporaryFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::contentOf;
using test::MemoryDefaultsStore;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kTwoItems = R"([
    {"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": "guia", "location": "/home/ana/guia.pdf"},
    {"id": "00000000-0000-0000-0000-000000000001", "kind": "video", "title": "Video de YouTube", "location": "https://a.b/c"}
])";

MemoryDefaultsStore storeWithItems(const QByteArray& json) {
    MemoryDefaultsStore store;
    store.setData(QStringLiteral("kit.items"), json);
    return store;
}

TEST(KitItem, HasTheIconOfItsKindAndExtension) {
    const auto icon = [](KitItem::Kind kind, const char* location) {
        return KitItem{QUuid::createUuid(), kind, {}, QString::fromUtf8(location)}.symbol();
    };
    using Kind = KitItem::Kind;
    EXPECT_EQ(icon(Kind::link, "https://a.b/c.pdf"), "link");
    EXPECT_EQ(icon(Kind::video, "https://a.b/c.pdf"), "play.rectangle.fill");
    for (const char* file : {"/a.key", "/a.ppt", "/a.pptx", "/a.ODP"}) {
        EXPECT_EQ(icon(Kind::file, file), "rectangle.on.rectangle.angled") << file;
    }
    EXPECT_EQ(icon(Kind::file, "/a.b/guía.PDF"), "doc.richtext");
    for (const char* file : {"/a.png", "/a.JPG", "/a.jpeg", "/a.heic", "/a.gif"}) {
        EXPECT_EQ(icon(Kind::file, file), "photo") << file;
    }
    for (const char* file : {"/a.mp4", "/a.mov", "/a.m4v"}) {
        EXPECT_EQ(icon(Kind::file, file), "film") << file;
    }
    for (const char* file : {"/a.xls", "/a.xlsx", "/a.numbers", "/a.csv"}) {
        EXPECT_EQ(icon(Kind::file, file), "tablecells") << file;
    }
    EXPECT_EQ(icon(Kind::file, "/a.txt"), "doc");
    EXPECT_EQ(icon(Kind::file, "/a.pdf/sin extensión"), "doc");
}

TEST(KitItem, IsReachedByAPathOrAnAddress) {
    KitItem item{QUuid::createUuid(), KitItem::Kind::file, {}, QStringLiteral("/tmp/año #1?.pdf")};
    EXPECT_EQ(item.url()->toLocalFile(), item.location);
    item = {QUuid::createUuid(), KitItem::Kind::link, {}, QStringLiteral("https://a.b/c?d=1")};
    EXPECT_EQ(item.url()->host(), "a.b");
    item.location = QStringLiteral("https://[mal");
    EXPECT_EQ(item.url(), std::nullopt);
}

TEST(KitItem, NewItemsHaveIdsOfTheirOwn) {
    EXPECT_NE(KitItem().id, KitItem().id);
}

TEST(ClassKit, AnEmptyStoreGivesNoItemsAndCopiesFiles) {
    MemoryDefaultsStore store;
    const ClassKit kit(store);
    EXPECT_THAT(kit.items(), IsEmpty());
    EXPECT_TRUE(kit.copyFiles());
    EXPECT_EQ(store.writes(), 0);
}

TEST(ClassKit, FindsTheStoredListAndSwitch) {
    MemoryDefaultsStore store = storeWithItems(kTwoItems);
    store.setBoolean(QStringLiteral("kit.copiar"), false);
    const ClassKit kit(store);
    ASSERT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(kit.items()[0].kind, KitItem::Kind::file);
    EXPECT_EQ(kit.items()[0].title, "guia");
    EXPECT_EQ(kit.items()[1].location, "https://a.b/c");
    EXPECT_FALSE(kit.copyFiles());
}

class ClassKitWithABadList : public testing::TestWithParam<const char*> {};

TEST_P(ClassKitWithABadList, StartsEmpty) {
    MemoryDefaultsStore store = storeWithItems(GetParam());
    EXPECT_THAT(ClassKit(store).items(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, ClassKitWithABadList,
    testing::Values(
        "", "{}", "[1]", R"([{"kind": "file", "title": "a", "location": "b"}])",
        R"([{"id": "no id", "kind": "file", "title": "a", "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "File", "title": "a", "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": 1, "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": "a"}])"));

TEST(ClassKit, ReloadTakesANewListAndAnnouncesIt) {
    MemoryDefaultsStore store;
    ClassKit kit(store);
    int heard = 0;
    QObject::connect(&kit, &ClassKit::itemsChanged, &kit, [&] { ++heard; });
    store.setData(QStringLiteral("kit.items"), kTwoItems);
    store.setText(QStringLiteral("kit.copiar"), QStringLiteral("no boolean"));
    kit.reload();
    EXPECT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(kit.copyFiles());
    EXPECT_EQ(store.boolean(QStringLiteral("kit.copiar")), true) << "the switch is written back";
    kit.reload();
    EXPECT_EQ(heard, 1);
}

TEST(ClassKit, TheCopySwitchIsWrittenThrough) {
    MemoryDefaultsStore store;
    ClassKit kit(store);
    kit.setCopyFiles(false);
    EXPECT_FALSE(ClassKit(store).copyFiles());
}

ClassData someClass() {
    const KitItem file{QUuid::createUuid(), KitItem::Kind::file, QStringLiteral("guía"), QStringLiteral("/a/guía.pdf")};
    const KitItem link{QUuid::createUuid(), KitItem::Kind::link, QStringLiteral("a.b"), QStringLiteral("https://a.b")};
    return {QStringLiteral("Clase 1.mp4"),
            {file, link},
            {{12.5, QStringLiteral("Marcador 1"), std::nullopt}, {3, QStringLiteral("a.b"), link.location}},
            {{file.id, QStringLiteral("Material/guía.pdf")}}};
}

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

TEST(ClassFolder, StandsBesideTheVideoUnderItsName) {
    EXPECT_EQ(ClassKit::folder("/v/Clase 1.2.mp4"), "/v/Clase 1.2 · material");
}

class RenamedClassFolder : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(ClassKit::folder(from));
        folder.write("Uno · material/.clase.json", someClass().toJson().toStdString());
    }

    TemporaryFolder folder;
    std::filesystem::path from = folder / "Uno.mp4";
    std::filesystem::path to = folder / "Dos.mp4";
};

TEST_F(RenamedClassFolder, FollowsItsVideoAndNamesIt) {
    ClassKit::renameFolder(from, to);
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(from)));
    ClassData expected = someClass();
    const auto record =
        ClassData::fromJson(QByteArray::fromStdString(contentOf(folder / "Dos · material/.clase.json")));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->video, "Dos.mp4");
    EXPECT_EQ(record->chapters, expected.chapters);
}

TEST_F(RenamedClassFolder, StaysWhereItIsWhenTheNewNameIsTaken) {
    std::filesystem::create_directory(ClassKit::folder(to));
    ClassKit::renameFolder(from, to);
    EXPECT_TRUE(std::filesystem::exists(ClassKit::folder(from) / ".clase.json"));
    EXPECT_TRUE(std::filesystem::is_empty(ClassKit::folder(to)));
}

TEST_F(RenamedClassFolder, MovesWithARecordThatCannotBeRead) {
    folder.write("Uno · material/.clase.json", "{\"video\"");
    ClassKit::renameFolder(from, to);
    EXPECT_EQ(contentOf(folder / "Dos · material/.clase.json"), "{\"video\"");
}

TEST_F(RenamedClassFolder, IsNotMadeWhereThereWasNone) {
    ClassKit::renameFolder(folder / "Tres.mp4", to);
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(to)));
}

} // namespace
} // namespace velmo
