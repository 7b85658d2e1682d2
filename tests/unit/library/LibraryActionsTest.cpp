#include "support/LeftRecording.h"
#include "support/LibraryFixture.h"
#include "support/ReadOnlyFolder.h"
#include "support/SmallDisk.h"

#include <fstream>

namespace velmo {
namespace {

using test::contentOf;
using testing::ElementsAre;
using testing::IsEmpty;

class LibraryRename : public test::LibraryFixture {
protected:
    LibraryRename() {
        video("vieja.mp4");
        inspector.videos["vieja.mp4"] = {10, 9};
        open();
        library->add(folder / "vieja.mp4", 10, {4}, {"Uno"});
        settle();
    }

    Result<std::filesystem::path> rename(const char* name) {
        return library->rename(item("vieja.mp4"), QString::fromUtf8(name));
    }
};

TEST_F(LibraryRename, TheVideoItsEntryAndItsPictureGoAlong) {
    const auto renamed = rename("nueva");
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed.value(), folder / "nueva.mp4");
    EXPECT_THAT(names(), ElementsAre("nueva.mp4"));
    EXPECT_THAT(item("nueva.mp4").markers, ElementsAre(4));
    EXPECT_EQ(metadata().keys(), QStringList{"nueva.mp4"});
    EXPECT_TRUE(library->thumbnail(folder / "nueva.mp4"));
    EXPECT_FALSE(library->thumbnail(folder / "vieja.mp4"));
}

TEST_F(LibraryRename, SlashesAndColonsAreReplacedAndBlanksCutOff) {
    EXPECT_EQ(rename(" \n a/b: c \t").value(), folder / "a-b. c.mp4");
}

TEST_F(LibraryRename, TheSameNameOrBlanksChangeNothing) {
    for (const char* name : {"vieja", "  vieja ", "", " \n\t "}) {
        const auto renamed = rename(name);
        ASSERT_TRUE(renamed) << name;
        EXPECT_EQ(renamed.value(), folder / "vieja.mp4") << name;
    }
    EXPECT_THAT(names(), ElementsAre("vieja.mp4"));
}

TEST_F(LibraryRename, TheExtensionStaysAsItIs) {
    video("B.MOV");
    library->reload();
    EXPECT_EQ(library->rename(item("B.MOV"), QStringLiteral("c.mp4")).value(), folder / "c.mp4.MOV");
}

TEST_F(LibraryRename, ATakenNameIsRefusedAndNothingHasChanged) {
    root.write("Velmo Studio/ocupada.mp4", "otra clase");
    const auto renamed = rename("ocupada");
    ASSERT_FALSE(renamed);
    EXPECT_EQ(renamed.error(), (Error{"VelmoStudio", 1, "Ya existe un video con ese nombre."}));
    EXPECT_EQ(contentOf(folder / "ocupada.mp4"), "otra clase");
    EXPECT_TRUE(std::filesystem::exists(folder / "vieja.mp4"));
    EXPECT_TRUE(metadata().contains("vieja.mp4"));
}

TEST_F(LibraryRename, AVideoThatHasGoneIsAnErrorWithAWordForTheUser) {
    const Recording recording = item("vieja.mp4");
    std::filesystem::remove(recording.url);
    const auto renamed = library->rename(recording, QStringLiteral("nueva"));
    ASSERT_FALSE(renamed);
    EXPECT_EQ(renamed.error().text, "El video ya no está en la carpeta de grabaciones.");
    EXPECT_TRUE(metadata().contains("vieja.mp4"));
}

TEST_F(LibraryRename, ANameThatIsTooLongIsAnErrorWithAWordForTheUser) {
    const auto renamed = rename(std::string(300, 'a').c_str());
    ASSERT_FALSE(renamed);
    EXPECT_EQ(renamed.error().text, "Ese nombre es demasiado largo.");
    EXPECT_THAT(names(), ElementsAre("vieja.mp4"));
}

TEST_F(LibraryRename, TheClassFolderGoesAlong) {
    std::filesystem::create_directory(folder / "vieja · material");
    ASSERT_TRUE(rename("nueva"));
    EXPECT_EQ(item("nueva.mp4").classFolder(), folder / "nueva · material");
}

TEST_F(LibraryRename, WithoutAnEntryOneLeftUnderTheNewNameGoes) {
    video("sin datos.mp4");
    library->setDriveLink(QStringLiteral("https://x"), folder / "nueva.mp4");
    library->reload();
    ASSERT_TRUE(library->rename(item("sin datos.mp4"), QStringLiteral("nueva")));
    EXPECT_EQ(item("nueva.mp4").driveLink, std::nullopt);
    EXPECT_FALSE(metadata().contains("nueva.mp4"));
}

TEST_F(LibraryRename, AnItemOfTheListItselfMayBeHandedOver) {
    ASSERT_TRUE(library->rename(library->items().front(), QStringLiteral("nueva")));
    EXPECT_THAT(names(), ElementsAre("nueva.mp4"));
}

class LibraryOnABadDay : public test::LibraryFixture {
protected:
    LibraryOnABadDay() {
        std::filesystem::permissions(root, std::filesystem::perms(0755));
        video("a.mp4");
        open();
        library->add(folder / "a.mp4", 10, {4}, {});
    }
};

TEST_F(LibraryOnABadDay, AReadOnlyFolderRefusesARenameWithAWordForTheUser) {
    const test::ReadOnlyFolder readOnly(folder);
    const auto renamed = library->rename(item("a.mp4"), QStringLiteral("b"));
    ASSERT_FALSE(renamed);
    EXPECT_EQ(renamed.error().text, "No tienes permiso para cambiar la carpeta de grabaciones.");
    EXPECT_THAT(names(), ElementsAre("a.mp4"));
    EXPECT_THAT(item("a.mp4").markers, ElementsAre(4));
}

TEST_F(LibraryOnABadDay, WhatCannotBeWrittenDownHoldsWhileTheProgramRuns) {
    {
        const test::ReadOnlyFolder readOnly(folder);
        library->setDriveLink(QStringLiteral("https://x"), folder / "a.mp4");
        EXPECT_EQ(item("a.mp4").driveLink, "https://x");
        EXPECT_FALSE(metadataText().find("https://x") != std::string::npos);
    }
    library->add(folder / "b.mp4", 1, {}, {});
    EXPECT_NE(metadataText().find("https://x"), std::string::npos) << "the next save has it";
}

TEST_F(LibraryOnABadDay, AFullDiskLeavesTheOldMetadataWhole) {
    const std::string before = metadataText();
    {
        const test::SmallDisk full(8);
        library->setDriveLink(QStringLiteral("https://x"), folder / "a.mp4");
    }
    EXPECT_EQ(metadataText(), before);
    EXPECT_EQ(item("a.mp4").driveLink, "https://x");
}

TEST_F(LibraryOnABadDay, AFolderThatCannotBeReadIsEmptyAndComesBackLater) {
    std::filesystem::permissions(folder, std::filesystem::perms(0300));
    {
        const test::ReadOnlyFolder other(trash.path()); // as somebody to whom the folder is closed
        library->reload();
        EXPECT_THAT(names(), IsEmpty());
    }
    std::filesystem::permissions(folder, std::filesystem::perms(0755));
    library->reload();
    EXPECT_THAT(item("a.mp4").markers, ElementsAre(4));
}

class LibraryTrash : public test::LibraryFixture {
protected:
    LibraryTrash() {
        video("a.mp4");
        inspector.videos["a.mp4"] = {10, 9};
        open();
        library->add(folder / "a.mp4", 10, {4}, {});
        settle();
    }
};

TEST_F(LibraryTrash, TheVideoAndItsClassFolderGoAndNothingIsKeptOfThem) {
    std::filesystem::create_directory(folder / "a · material");
    EXPECT_TRUE(library->trash(library->items().front()));
    EXPECT_THAT(files.calls, ElementsAre("trash a.mp4", "trash a · material"));
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_FALSE(metadata().contains("a.mp4"));
    EXPECT_FALSE(library->thumbnail(folder / "a.mp4"));
}

TEST_F(LibraryTrash, AFileThatCannotBeMovedComesBackWithoutItsEntry) {
    files.trash.clear();
    std::filesystem::create_directory(folder / "a · material");
    const auto moved = library->trash(library->items().front());
    ASSERT_FALSE(moved);
    EXPECT_EQ(moved.error().text, "No se pudo mover el video a la papelera.");
    EXPECT_THAT(files.calls, ElementsAre("trash a.mp4", "trash a · material")) << "the steps go on";
    EXPECT_EQ(item("a.mp4").duration, 0);
    EXPECT_THAT(item("a.mp4").markers, IsEmpty());
}

TEST_F(LibraryTrash, TheDesktopIsAskedForWhatConcernsIt) {
    library->reveal(folder / "a.mp4");
    library->copyToPasteboard(folder / "a.mp4");
    EXPECT_TRUE(library->openFolder());
    EXPECT_THAT(files.calls, ElementsAre("reveal a.mp4", "copy a.mp4", "open Velmo Studio"));
}

TEST_F(LibraryTrash, TheSharedOneIsTheOneThatWasRegistered) {
    Library::setShared(library.get());
    EXPECT_EQ(&Library::shared(), library.get());
    Library::setShared(nullptr);
}

class LibraryWhileSaving : public test::LibraryFixture {
protected:
    LibraryWhileSaving() {
        left_.record(60);
        std::filesystem::create_directory(folder / "Clase · material");
        open();
    }

    test::LeftRecording left_{video("Clase.mp4")};
};

TEST_F(LibraryWhileSaving, AVideoThatIsStillBeingSavedIsNeitherRenamedNorTrashed) {
    const auto renamed = library->rename(item("Clase.mp4"), QStringLiteral("Derivadas"));
    ASSERT_FALSE(renamed);
    EXPECT_EQ(renamed.error().text, "La grabación todavía se está guardando.");
    const auto trashed = library->trash(item("Clase.mp4"));
    ASSERT_FALSE(trashed);
    EXPECT_EQ(trashed.error().text, "La grabación todavía se está guardando.");
    EXPECT_THAT(files.calls, IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(left_.journal()));

    ASSERT_TRUE(library->add(left_.video(), 2, {0.5}, {"Uno"}));
    EXPECT_THAT(item("Clase.mp4").markers, ElementsAre(0.5));
    ASSERT_TRUE(library->rename(item("Clase.mp4"), QStringLiteral("Derivadas")));
    EXPECT_THAT(item("Derivadas.mp4").markers, ElementsAre(0.5));
    EXPECT_TRUE(item("Derivadas.mp4").classFolder());
    EXPECT_TRUE(library->trash(item("Derivadas.mp4")));
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(LibraryWhileSaving, ARecordingThatWasLeftBehindMayBeTrashed) {
    left_.die();
    EXPECT_TRUE(library->trash(item("Clase.mp4")));
    EXPECT_THAT(files.calls, ElementsAre("trash Clase.mp4", "trash Clase · material"));
}

TEST_F(LibraryWhileSaving, ARecordingWhoseEntryCannotBeWrittenMayBeRenamedAllTheSame) {
    {
        const test::SmallDisk full(8);
        EXPECT_FALSE(library->add(left_.video(), 2, {0.5}, {"Uno"}));
    }
    ASSERT_TRUE(library->rename(item("Clase.mp4"), QStringLiteral("Derivadas")));
    EXPECT_THAT(item("Derivadas.mp4").markers, ElementsAre(0.5));
}

} // namespace
} // namespace velmo
