#include "classkit/ClassKit.h"

#include "KitWorld.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::KitWorld;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

using Files = std::vector<std::filesystem::path>;

const char* const kTwoItems = R"([
    {"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": "guia", "location": "/home/ana/guia.pdf"},
    {"id": "00000000-0000-0000-0000-000000000001", "kind": "video", "title": "Video de YouTube", "location": "https://a.b/c"}
])";

class StoredClassKit : public testing::Test {
protected:
    void storeItems(const QByteArray& json) { world.store.setData(QStringLiteral("kit.items"), json); }

    KitWorld world;
};

TEST_F(StoredClassKit, AnEmptyStoreGivesNoItemsAndCopiesFiles) {
    const ClassKit kit(world.store, world.services());
    EXPECT_THAT(kit.items(), IsEmpty());
    EXPECT_TRUE(kit.copyFiles());
    EXPECT_EQ(world.store.writes(), 0);
}

TEST_F(StoredClassKit, FindsTheStoredListAndSwitch) {
    storeItems(kTwoItems);
    world.store.setBoolean(QStringLiteral("kit.copiar"), false);
    const ClassKit kit(world.store, world.services());
    ASSERT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(kit.items()[0].kind, KitItem::Kind::file);
    EXPECT_EQ(kit.items()[0].title, "guia");
    EXPECT_EQ(kit.items()[1].location, "https://a.b/c");
    EXPECT_FALSE(kit.copyFiles());
}

class ClassKitWithABadList : public StoredClassKit, public testing::WithParamInterface<const char*> {};

TEST_P(ClassKitWithABadList, StartsEmpty) {
    storeItems(GetParam());
    EXPECT_THAT(ClassKit(world.store, world.services()).items(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, ClassKitWithABadList,
    testing::Values(
        "", "{}", "[1]", R"([{"kind": "file", "title": "a", "location": "b"}])",
        R"([{"id": "no id", "kind": "file", "title": "a", "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "File", "title": "a", "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": 1, "location": "b"}])",
        R"([{"id": "6F9619FF-8B86-D011-B42D-00C04FC964FF", "kind": "file", "title": "a"}])"));

TEST_F(StoredClassKit, ReloadTakesANewListAndAnnouncesIt) {
    ClassKit kit(world.store, world.services());
    int heard = 0;
    QObject::connect(&kit, &ClassKit::itemsChanged, &kit, [&] { ++heard; });
    storeItems(kTwoItems);
    world.store.setText(QStringLiteral("kit.copiar"), QStringLiteral("no boolean"));
    kit.reload();
    EXPECT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(kit.copyFiles());
    EXPECT_EQ(world.store.boolean(QStringLiteral("kit.copiar")), true) << "the switch is written back";
    kit.reload();
    EXPECT_EQ(heard, 1);
}

TEST_F(StoredClassKit, TheCopySwitchIsWrittenThrough) {
    ClassKit kit(world.store, world.services());
    kit.setCopyFiles(false);
    EXPECT_FALSE(ClassKit(world.store, world.services()).copyFiles());
}

class FilledClassKit : public StoredClassKit {
protected:
    FilledClassKit() {
        QObject::connect(&kit, &ClassKit::itemsChanged, &kit, [this] { ++heard; });
    }
    std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        for (const KitItem& item : kit.items()) {
            titles.push_back(item.title.toStdString());
        }
        return titles;
    }
    /// What the next launch finds.
    std::vector<KitItem> stored() { return ClassKit(world.store, world.services()).items(); }
    KitItem itemAt(KitItem::Kind kind, const std::filesystem::path& location) const {
        return {QUuid::createUuid(), kind, QStringLiteral("título"), QString::fromStdString(location.native())};
    }

    TemporaryFolder folder;
    ClassKit kit{world.store, world.services()};
    int heard = 0;
};

TEST_F(FilledClassKit, TakesFilesInTheirOrderAndKeepsThem) {
    kit.add(Files{"/b/guía.v2.pdf", "/a/LEEME", "/c/.oculto"});
    EXPECT_THAT(titles(), ElementsAre("guía.v2", "LEEME", ".oculto"));
    EXPECT_EQ(kit.items()[0].location, "/b/guía.v2.pdf");
    EXPECT_EQ(kit.items()[0].kind, KitItem::Kind::file);
    EXPECT_EQ(stored(), kit.items());
    EXPECT_EQ(heard, 1);
}

TEST_F(FilledClassKit, SkipsAFileThatItHasButNotTwoOfOneBatch) {
    kit.add(Files{"/a.pdf"});
    kit.add(Files{"/b.pdf", "/a.pdf", "/b.pdf"});
    EXPECT_THAT(titles(), ElementsAre("a", "b", "b"));
    const int writes = world.store.writes();
    kit.add(Files{"/a.pdf"});
    EXPECT_EQ(world.store.writes(), writes) << "nothing new, nothing to write";
}

TEST_F(FilledClassKit, TakesTheSameAddressTwiceAndNoTextThatIsNone) {
    EXPECT_TRUE(kit.add(QStringLiteral("a.b/c")));
    EXPECT_TRUE(kit.add(QStringLiteral("a.b/c")));
    EXPECT_FALSE(kit.add(QStringLiteral("localhost")));
    EXPECT_THAT(titles(), ElementsAre("a.b/c", "a.b/c"));
    EXPECT_EQ(stored(), kit.items());
    EXPECT_EQ(heard, 2);
}

TEST_F(FilledClassKit, ForgetsWhatIsRemoved) {
    kit.add(Files{"/a", "/b", "/c"});
    kit.remove(kit.items()[1]);
    EXPECT_THAT(titles(), ElementsAre("a", "c"));
    EXPECT_EQ(stored(), kit.items());
    kit.removeAll();
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(FilledClassKit, KeepsATitleOfTheUser) {
    kit.add(Files{"/a", "/b"});
    kit.setTitle(kit.items()[1].id, QStringLiteral("Tarea"));
    EXPECT_THAT(titles(), ElementsAre("a", "Tarea"));
    EXPECT_EQ(stored(), kit.items());
    const int writes = world.store.writes();
    kit.setTitle(QUuid::createUuid(), QStringLiteral("Nadie"));
    EXPECT_EQ(world.store.writes(), writes);
}

TEST_F(FilledClassKit, AsksForFilesInFrontOfOtherApplications) {
    kit.addFiles();
    EXPECT_THAT(world.calls, ElementsAre("toFront"));
    EXPECT_THAT(world.chooser.asked, ElementsAre("Agregar material a la clase / Agregar"));
    EXPECT_THAT(titles(), IsEmpty());
    world.chooser.confirm(Files{"/a.pdf", "/b.pdf"});
    EXPECT_THAT(titles(), ElementsAre("a", "b"));
}

TEST_F(FilledClassKit, OpensAFileAndLeavesAChapter) {
    const auto file = folder.write("año #1?.txt");
    kit.open(itemAt(KitItem::Kind::file, file));
    EXPECT_THAT(world.files.calls, ElementsAre("open año #1?.txt"));
    EXPECT_THAT(world.calls, ElementsAre("chapter título @ " + file.native()));
}

TEST_F(FilledClassKit, TellsOfAFileThatHasGoneAndLeavesNoChapter) {
    kit.open(itemAt(KitItem::Kind::file, folder / "gone.pdf"));
    EXPECT_THAT(world.files.calls, IsEmpty());
    EXPECT_THAT(world.calls, ElementsAre("flash No se encuentra «título»"));
}

TEST_F(FilledClassKit, OpensAnAddressAsItIsWrittenOnTheWire) {
    kit.open(itemAt(KitItem::Kind::link, "https://a.b/una guía?c=d&e"));
    EXPECT_THAT(world.files.calls, ElementsAre("address https://a.b/una%20gu%C3%ADa?c=d&e"));
    EXPECT_THAT(world.calls, ElementsAre("chapter título @ https://a.b/una guía?c=d&e"));
}

TEST_F(FilledClassKit, LeavesAnAddressThatIsNoneAlone) {
    kit.open(itemAt(KitItem::Kind::link, "https://[mal"));
    kit.open(itemAt(KitItem::Kind::video, ""));
    EXPECT_THAT(world.files.calls, IsEmpty());
    EXPECT_THAT(world.calls, IsEmpty());
}

} // namespace
} // namespace velmo
