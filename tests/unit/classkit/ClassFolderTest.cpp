#include "classkit/ClassKit.h"

#include "SomeClass.h"

#include "support/SmallDisk.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace velmo {
namespace {

using test::contentOf;
using test::SmallDisk;
using test::someClass;
using test::TemporaryFolder;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

ClassData recordOf(const std::filesystem::path& video) {
    return ClassData::fromJson(QByteArray::fromStdString(contentOf(ClassKit::folder(video) / ".clase.json"))).value();
}

TEST(ClassFolder, StandsBesideTheVideoUnderItsName) {
    EXPECT_EQ(ClassKit::folder("/v/Clase 1.2.mp4"), "/v/Clase 1.2 · material");
}

class WrittenClassFolder : public testing::Test {
protected:
    KitItem fileItem(const std::filesystem::path& path) {
        return {QUuid::createUuid(), KitItem::Kind::file, QString::fromStdString(path.stem().native()),
                QString::fromStdString(path.native())};
    }
    /// A source file in a folder of its own.
    KitItem source(const char* folderName, const char* name, std::string_view content) {
        std::filesystem::create_directories(folder / folderName);
        return fileItem(folder.write(std::filesystem::path(folderName) / name, content));
    }
    std::optional<std::filesystem::path> write(bool copyFiles = true) {
        return ClassKit::writeFolder(video, items, chapters, copyFiles);
    }
    std::vector<std::string> material() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(classFolder / "Material")) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
    std::string copyOf(const KitItem& item) const {
        return contentOf(classFolder / recordOf(video).copied.at(item.id).toStdString());
    }
    bool isCopied(const KitItem& item) const { return recordOf(video).copied.contains(item.id); }

    TemporaryFolder folder;
    std::filesystem::path video = folder / "Clase 1.mp4";
    std::filesystem::path classFolder = folder / "Clase 1 · material";
    std::vector<KitItem> items;
    std::vector<Chapter> chapters;
};

TEST_F(WrittenClassFolder, IsNotMadeForARecordingWithoutItemsAndChapters) {
    EXPECT_EQ(write(), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(classFolder));
}

TEST_F(WrittenClassFolder, HasPagesAndNoMaterialForMarkersAlone) {
    chapters = {{7, QStringLiteral("Marcador 1"), std::nullopt}, {3, QStringLiteral("Marcador 2"), std::nullopt}};
    EXPECT_EQ(write(), classFolder);
    EXPECT_THAT(contentOf(classFolder / "Índice.txt"), HasSubstr("00:00 Inicio\n00:03 Marcador 2\n00:07 Marcador 1\n"));
    EXPECT_THAT(contentOf(classFolder / "Ver la clase.html"), HasSubstr("src=\"../Clase%201.mp4\""));
    EXPECT_FALSE(std::filesystem::exists(classFolder / "Material"));
    EXPECT_EQ(recordOf(video), (ClassData{QStringLiteral("Clase 1.mp4"), {}, chapters, {}}))
        << "the record keeps the order of making";
}

TEST_F(WrittenClassFolder, HoldsCopiesUnderTheirOwnNames) {
    items = {source("a", "guía & más #1 100%.pdf", "contenido")};
    write();
    EXPECT_EQ(copyOf(items[0]), "contenido");
    EXPECT_EQ(recordOf(video).copied.at(items[0].id), "Material/guía & más #1 100%.pdf");
    EXPECT_THAT(contentOf(classFolder / "Ver la clase.html"),
                HasSubstr("href=\"Material/gu%C3%ADa%20&amp;%20m%C3%A1s%20%231%20100%25.pdf\""));
}

TEST_F(WrittenClassFolder, NumbersFilesOfOneName) {
    items = {source("a", "guia.pdf", "1"), source("b", "guia.pdf", "2"), source("c", "guia.pdf", "3"),
             source("d", "a.tar.gz", "4"), source("e", "a.tar.gz", "5"), source("f", "LEEME", "6"),
             source("g", "LEEME", "7")};
    write();
    EXPECT_THAT(material(), UnorderedElementsAre("guia.pdf", "guia (2).pdf", "guia (3).pdf", "a.tar.gz", "a.tar (2).gz",
                                                 "LEEME", "LEEME (2)."));
    EXPECT_EQ(copyOf(items[1]), "2");
    EXPECT_EQ(copyOf(items[2]), "3");
}

TEST_F(WrittenClassFolder, HasNoCopiesWhenNoneAreWanted) {
    items = {source("a", "guia.pdf", "1")};
    write(false);
    EXPECT_FALSE(std::filesystem::exists(classFolder / "Material"));
    EXPECT_THAT(contentOf(classFolder / "Ver la clase.html"), HasSubstr("href=\"file://" + folder.path().native()));
}

TEST_F(WrittenClassFolder, ListsAFileThatHasGoneAndCopiesTheOthers) {
    items = {fileItem(folder / "gone.pdf"), source("a", "guia.pdf", "1")};
    write();
    EXPECT_FALSE(isCopied(items[0]));
    EXPECT_TRUE(isCopied(items[1]));
    EXPECT_EQ(recordOf(video).items, items);
    EXPECT_THAT(contentOf(classFolder / "Índice.txt"), HasSubstr("• gone\n• guia (Material/guia.pdf)\n"));
}

TEST_F(WrittenClassFolder, HasNoMaterialWhenNoFileCouldBeCopied) {
    items = {fileItem(folder / "gone.pdf")};
    write();
    EXPECT_FALSE(std::filesystem::exists(classFolder / "Material"));
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    items = {fileItem(folder / "pipe")};
    write();
    EXPECT_FALSE(std::filesystem::exists(classFolder / "Material"));
}

TEST_F(WrittenClassFolder, TakesAFolderWithAllThatIsInIt) {
    std::filesystem::create_directories(folder / "carpeta/dentro");
    folder.write("carpeta/dentro/a.txt", "a");
    items = {fileItem(folder / "carpeta"), fileItem(folder / "carpeta/dentro/")};
    write();
    EXPECT_EQ(contentOf(classFolder / "Material/carpeta/dentro/a.txt"), "a");
    EXPECT_EQ(contentOf(classFolder / "Material/dentro/a.txt"), "a");
}

TEST_F(WrittenClassFolder, DoesNotSwallowItselfWithAFolderAroundIt) {
    items = {fileItem(folder.path()), source("a", "guia.pdf", "1")};
    write();
    EXPECT_THAT(material(), UnorderedElementsAre("guia.pdf"));
}

TEST_F(WrittenClassFolder, GoesOnAfterACopyForWhichThereIsNoRoom) {
    const std::string big(300'000, 'x');
    items = {source("a", "guia.pdf", "1"), source("b", "big.mov", big), source("c", "notas.txt", "3")};
    {
        const SmallDisk full(100'000);
        write();
    }
    EXPECT_THAT(material(), UnorderedElementsAre("guia.pdf", "notas.txt")) << "no half of it stays";
    EXPECT_FALSE(isCopied(items[1]));
    const std::string page = contentOf(classFolder / "Ver la clase.html");
    EXPECT_THAT(page, HasSubstr("href=\"Material/guia.pdf\""));
    EXPECT_THAT(page, HasSubstr("href=\"file://" + (folder / "b/big.mov").native()));
    EXPECT_THAT(page, HasSubstr("href=\"Material/notas.txt\""));
    EXPECT_THAT(page, testing::EndsWith("</body></html>"));
}

TEST_F(WrittenClassFolder, IsNamedEvenWhenItCannotBeMade) {
    chapters = {{1, QStringLiteral("a"), std::nullopt}};
    folder.write(classFolder.filename(), "a file of that name");
    EXPECT_EQ(write(), classFolder);
    EXPECT_EQ(contentOf(classFolder), "a file of that name");
}

TEST_F(WrittenClassFolder, IsMadeWithTheFoldersAboveIt) {
    chapters = {{1, QStringLiteral("a"), std::nullopt}};
    EXPECT_TRUE(ClassKit::writeFolder(folder / "new/deep/a.mp4", items, chapters, true));
    EXPECT_EQ(recordOf(folder / "new/deep/a.mp4").chapters, chapters);
}

class RenamedClassFolder : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(ClassKit::folder(from));
        folder.write("Uno · material/.clase.json", someClass().toJson().toStdString());
    }

    TemporaryFolder folder;
    std::filesystem::path from = folder / "Uno.mp4";
    std::filesystem::path to = folder / "Dos & más.mp4";
};

TEST_F(RenamedClassFolder, FollowsItsVideoAndNamesItInEveryDocument) {
    ClassKit::renameFolder(from, to);
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(from)));
    EXPECT_EQ(recordOf(to).video, "Dos & más.mp4");
    EXPECT_EQ(recordOf(to).chapters, someClass().chapters);
    const std::string page = contentOf(ClassKit::folder(to) / "Ver la clase.html");
    EXPECT_THAT(page, HasSubstr("<title>Dos &amp; más</title>"));
    EXPECT_THAT(page, HasSubstr("src=\"../Dos%20&amp;%20m%C3%A1s.mp4\""));
    EXPECT_THAT(page, HasSubstr("href=\"Material/gu%C3%ADa.pdf\"")) << "the copies are still known";
    EXPECT_THAT(contentOf(ClassKit::folder(to) / "Índice.txt"), testing::StartsWith("Dos & más\n\n"));
}

TEST_F(RenamedClassFolder, StaysWhereItIsWhenTheNewNameIsTaken) {
    std::filesystem::create_directory(ClassKit::folder(to));
    ClassKit::renameFolder(from, to);
    EXPECT_TRUE(std::filesystem::exists(ClassKit::folder(from) / ".clase.json"));
    EXPECT_TRUE(std::filesystem::is_empty(ClassKit::folder(to)));
}

TEST_F(RenamedClassFolder, MovesWithItsOldPageWhenTheRecordCannotBeRead) {
    folder.write("Uno · material/.clase.json", "{\"video\"");
    folder.write("Uno · material/Ver la clase.html", "old");
    ClassKit::renameFolder(from, to);
    EXPECT_EQ(contentOf(ClassKit::folder(to) / ".clase.json"), "{\"video\"");
    EXPECT_EQ(contentOf(ClassKit::folder(to) / "Ver la clase.html"), "old");
}

TEST_F(RenamedClassFolder, IsNotMadeWhereThereWasNone) {
    ClassKit::renameFolder(folder / "Tres.mp4", to);
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(to)));
}

class TrimmedClassFolder : public RenamedClassFolder {};

TEST_F(TrimmedClassFolder, KeepsTheChaptersOfThePieceAndCountsFromItsStart) {
    ClassData data = someClass();
    data.chapters = {{20, QStringLiteral("end"), QStringLiteral("/a")},
                     {9.9, QStringLiteral("before"), std::nullopt},
                     {10, QStringLiteral("start"), std::nullopt},
                     {20.1, QStringLiteral("after"), std::nullopt}};
    folder.write("Uno · material/.clase.json", data.toJson().toStdString());
    ClassKit::trimChapters(from, 10, 20);
    EXPECT_EQ(recordOf(from).chapters, (std::vector<Chapter>{{10, QStringLiteral("end"), QStringLiteral("/a")},
                                                             {0, QStringLiteral("start"), std::nullopt}}));
    EXPECT_THAT(contentOf(ClassKit::folder(from) / "Índice.txt"), HasSubstr("00:00 Inicio\n00:10 end\n"));
    EXPECT_THAT(contentOf(ClassKit::folder(from) / "Ver la clase.html"), Not(HasSubstr("after")));
}

TEST_F(TrimmedClassFolder, StaysAsItIsWhenItsRecordCannotBeRead) {
    folder.write("Uno · material/.clase.json", "[]");
    ClassKit::trimChapters(from, 0, 1);
    EXPECT_EQ(contentOf(ClassKit::folder(from) / ".clase.json"), "[]");
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(from) / "Índice.txt"));
    ClassKit::trimChapters(to, 0, 1);
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(to)));
}

} // namespace
} // namespace velmo
