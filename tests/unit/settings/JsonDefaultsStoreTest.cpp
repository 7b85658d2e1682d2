#include "settings/JsonDefaultsStore.h"

#include "settings/Prefs.h"
#include "support/TemporaryFolder.h"

#include <QJsonArray>

#include <gmock/gmock.h>

#include <limits>
#include <sys/stat.h>
#include <vector>

namespace velmo {
namespace {

using test::contentOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class JsonDefaultsStoreTest : public testing::Test {
protected:
    JsonDefaultsStore open() {
        return JsonDefaultsStore(file, [this](const std::string& line) { log.push_back(line); });
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "velmo-studio" / "defaults.json";
    std::vector<std::string> log;
};

TEST_F(JsonDefaultsStoreTest, AValueIsOnTheDiskWhenTheWriteReturns) {
    JsonDefaultsStore store = open();
    store.setInteger(QStringLiteral("displayID"), 7);
    EXPECT_EQ(open().integer(QStringLiteral("displayID")), 7);
}

TEST_F(JsonDefaultsStoreTest, EveryTypeComesBackAsItWas) {
    const QJsonObject nested{{"a", QJsonArray{1, "b", QJsonObject{{"c", false}}}}};
    {
        JsonDefaultsStore store = open();
        store.setText("text", QStringLiteral("ñ «»\n\u0001"));
        store.setInteger("whole", std::numeric_limits<std::int64_t>::max());
        store.setBoolean("no", false);
        store.setReal("third", 1.0 / 3.0);
        store.setReal("two", 2.0);
        store.setData("data", QByteArray("\0\xff[]", 4));
        store.setAny("nested", nested);
        store.setText("", QStringLiteral("empty key"));
    }
    const JsonDefaultsStore store = open();
    EXPECT_EQ(store.text("text"), QStringLiteral("ñ «»\n\u0001"));
    EXPECT_EQ(store.integer("whole"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(store.boolean("no"), false);
    EXPECT_EQ(store.real("third"), 1.0 / 3.0);
    EXPECT_EQ(store.real("two"), 2.0);
    EXPECT_EQ(store.integer("two"), 2);
    EXPECT_EQ(store.data("data"), QByteArray("\0\xff[]", 4));
    EXPECT_EQ(store.any("nested").toObject(), nested);
    EXPECT_EQ(store.text(""), "empty key");
}

TEST_F(JsonDefaultsStoreTest, AnAbsentKeyIsNotFalseNorZeroNorEmpty) {
    JsonDefaultsStore store = open();
    store.setBoolean("no", false);
    store.setInteger("zero", 0);
    store.setText("empty", {});
    EXPECT_TRUE(store.contains("no") && store.contains("zero") && store.contains("empty"));
    EXPECT_FALSE(store.contains("other"));
    EXPECT_EQ(store.boolean("other"), std::nullopt);
    EXPECT_EQ(store.integer("other"), std::nullopt);
    EXPECT_EQ(store.text("other"), std::nullopt);
    EXPECT_EQ(store.data("other"), std::nullopt);
}

TEST_F(JsonDefaultsStoreTest, AValueOfAnotherTypeCountsAsAbsentAndStays) {
    JsonDefaultsStore store = open();
    store.setText("text", QStringLiteral("1"));
    store.setInteger("one", 1);
    store.setReal("half", 0.5);
    store.setReal("huge", 1e300);
    store.setBoolean("yes", true);
    store.setAny("pair", QJsonObject{{"base64", "AA=="}, {"more", 1}});
    store.setAny("crooked", QJsonObject{{"base64", "no base 64!"}});
    EXPECT_EQ(store.integer("text"), std::nullopt);
    EXPECT_EQ(store.real("text"), std::nullopt);
    EXPECT_EQ(store.boolean("one"), std::nullopt);
    EXPECT_EQ(store.text("one"), std::nullopt);
    EXPECT_EQ(store.integer("half"), std::nullopt);
    EXPECT_EQ(store.integer("huge"), std::nullopt);
    EXPECT_EQ(store.real("yes"), std::nullopt);
    EXPECT_EQ(store.data("text"), std::nullopt);
    EXPECT_EQ(store.data("pair"), std::nullopt);
    EXPECT_EQ(store.data("crooked"), std::nullopt);
    EXPECT_EQ(open().text("text"), "1");
}

TEST_F(JsonDefaultsStoreTest, ARemovedKeyIsGoneFromTheDisk) {
    JsonDefaultsStore store = open();
    store.setInteger("a", 1);
    store.setInteger("b", 2);
    store.remove("a");
    store.setAny("b", QJsonValue::Null);
    EXPECT_FALSE(open().contains("a"));
    EXPECT_FALSE(open().contains("b"));
}

TEST_F(JsonDefaultsStoreTest, ANumberThatIsNoneRemovesTheKey) {
    JsonDefaultsStore store = open();
    store.setReal("a", 1);
    store.setReal("a", std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(store.contains("a"));
}

TEST_F(JsonDefaultsStoreTest, NothingIsMadeUntilSomethingIsWritten) {
    open();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(JsonDefaultsStoreTest, NoOtherFileIsLeftBehind) {
    JsonDefaultsStore store = open();
    for (int i = 0; i < 20; ++i) {
        store.setInteger("a", i);
    }
    const std::filesystem::directory_iterator entries(file.parent_path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(JsonDefaultsStoreTest, ALinkToTheFileStaysALink) {
    std::filesystem::create_directories(file.parent_path());
    folder.write("real.json", "{}");
    std::filesystem::create_symlink(folder / "real.json", file);
    open().setInteger("a", 1);
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_THAT(contentOf(folder / "real.json"), HasSubstr("\"a\": 1"));
}

TEST_F(JsonDefaultsStoreTest, TheFileIsTheUsersAloneUnlessItHadAnotherMode) {
    open().setInteger("a", 1);
    struct stat info {};
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777u, 0600u);
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    open().setInteger("a", 2);
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777u, 0640u);
}

class DamagedDefaults : public JsonDefaultsStoreTest, public testing::WithParamInterface<std::string> {};

TEST_P(DamagedDefaults, AreKeptAsideAndTheProgramStartsWithItsDefaults) {
    std::filesystem::create_directories(file.parent_path());
    folder.write("velmo-studio/defaults.json", GetParam());
    folder.write("velmo-studio/defaults.json.damaged-1", "an earlier one");

    JsonDefaultsStore store = open();
    Prefs prefs(store);
    EXPECT_EQ(prefs.zoomLevel.value(), 2.0);
    EXPECT_THAT(log, SizeIs(1));
    EXPECT_EQ(contentOf(folder / "velmo-studio/defaults.json.damaged-2"), GetParam());
    EXPECT_EQ(contentOf(folder / "velmo-studio/defaults.json.damaged-1"), "an earlier one");

    prefs.zoomLevel = 3.0;
    EXPECT_EQ(open().real("zoomLevel"), 3.0);
}

INSTANTIATE_TEST_SUITE_P(All, DamagedDefaults,
                         testing::Values("", "{\"zoomLevel\": 2.5, \"mir", "hola", "[1, 2]", "null", "{} {}",
                                         std::string("\0\0\0\0", 4), "{\"a\": \"\xff\xfe", "{'a': 1}"));

TEST_F(JsonDefaultsStoreTest, AFolderInTheFilesPlaceIsKeptAsideToo) {
    std::filesystem::create_directories(file);
    open().setInteger("a", 1);
    EXPECT_EQ(open().integer("a"), 1);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "velmo-studio/defaults.json.damaged-1"));
}

TEST_F(JsonDefaultsStoreTest, WhatCannotBeWrittenHoldsInMemoryAndIsMadeUpForLater) {
    folder.write("velmo-studio", "a file where the folder should be");
    JsonDefaultsStore store = open();
    store.setInteger("a", 1);
    EXPECT_EQ(store.integer("a"), 1);
    EXPECT_THAT(log, testing::Not(IsEmpty()));

    std::filesystem::remove(folder / "velmo-studio");
    store.setInteger("a", 1); // the same value: the file still lacks it
    EXPECT_EQ(open().integer("a"), 1);
}

} // namespace
} // namespace velmo
