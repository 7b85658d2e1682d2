#include "support/LibraryFixture.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class LibraryScan : public test::LibraryFixture {};

TEST_F(LibraryScan, AnEmptyFolderYieldsNoItems) {
    open();
    EXPECT_THAT(library->items(), IsEmpty());
    EXPECT_EQ(library->focus(), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / ".velmo-studio.json")) << "nothing to write down";
}

TEST_F(LibraryScan, AMissingFolderIsMadeWithItsParents) {
    folder = root / "Vídeos" / "de clase" / "Velmo Studio";
    open();
    EXPECT_TRUE(std::filesystem::is_directory(folder));
}

TEST_F(LibraryScan, AFolderThatCannotBeMadeIsAnEmptyLibrary) {
    root.write("file");
    folder = root / "file" / "Velmo Studio";
    open();
    EXPECT_THAT(library->items(), IsEmpty());
    library->reload();
    const auto opened = library->openFolder();
    ASSERT_FALSE(opened);
    EXPECT_FALSE(opened.error().text.empty());
    EXPECT_THAT(files.calls, IsEmpty());
    library->add(folder / "a.mp4", 1, {}, {});
    EXPECT_THAT(library->items(), IsEmpty());
}

TEST_F(LibraryScan, VideosAreKnownByTheirExtensionInAnyCase) {
    for (const char* name :
         {"a.mp4", "b.MP4", "c.Mov", "d.m4v", "e.webm", "f.mp4.part", "mp4", ".hidden.mp4", "g.txt"}) {
        video(name);
    }
    std::filesystem::create_directory(folder / "carpeta.mp4");
    std::filesystem::create_directory(folder / "a · material");
    open();
    EXPECT_THAT(names(), UnorderedElementsAre("a.mp4", "b.MP4", "c.Mov", "d.m4v"));
}

TEST_F(LibraryScan, NamesWithAnyBytesAreListedAndKeepWhatIsKnownOfThem) {
    const std::vector<std::string> odd{"sp ace\t\"q'\\\n.mp4",
                                       "ñ·😀 › é.mp4",
                                       "\xff\xfe-malo.mp4",
                                       "-rf ~.mp4",
                                       "%41%00.mp4",
                                       "\xef\xbb\xbf"
                                       "bom.mp4",
                                       "\x01.mp4"};
    for (const std::string& name : odd) {
        video(name);
    }
    open();
    for (const std::string& name : odd) {
        library->add(folder / name, 60, {1.5}, {QString::fromStdString("de " + std::to_string(name.size()))});
    }
    open();
    EXPECT_THAT(names(), testing::UnorderedElementsAreArray(odd));
    for (const std::string& name : odd) {
        EXPECT_EQ(item(name).duration, 60) << name;
        EXPECT_THAT(item(name).markers, ElementsAre(1.5)) << name;
    }
    ASSERT_TRUE(library->rename(item("\xff\xfe-malo.mp4"), QStringLiteral("bueno")));
    EXPECT_EQ(item("bueno.mp4").duration, 60);
}

TEST_F(LibraryScan, TheTitleIsTheFileNameWithoutItsExtension) {
    video("Clase 1.2 final.mp4");
    open();
    EXPECT_EQ(library->items().front().title(), "Clase 1.2 final");
}

TEST_F(LibraryScan, SizeAndDateComeFromTheFile) {
    root.write("Velmo Studio/a.mp4", std::string(12345, 'x'));
    const auto before = std::chrono::system_clock::now() - std::chrono::minutes(1);
    open();
    EXPECT_EQ(item("a.mp4").size, 12345);
    EXPECT_GT(item("a.mp4").created, before);
    EXPECT_LT(item("a.mp4").created, before + std::chrono::minutes(2));
}

TEST_F(LibraryScan, ALinkThatLeadsNowhereIsListedWithNothingKnown) {
    std::filesystem::create_symlink("nowhere", folder / "a.mp4");
    open();
    EXPECT_EQ(item("a.mp4").size, 0);
    EXPECT_EQ(item("a.mp4").created, now);
}

TEST_F(LibraryScan, TheNewestComesFirst) {
    video("b.mp4");
    std::filesystem::create_symlink("nowhere", folder / "a.mp4"); // has the date of the scan
    std::filesystem::create_symlink("nowhere", folder / "c.mp4");
    now = std::chrono::system_clock::now() + std::chrono::hours(1);
    open();
    EXPECT_THAT(names(), ElementsAre(testing::AnyOf("a.mp4", "c.mp4"), testing::AnyOf("a.mp4", "c.mp4"), "b.mp4"));
    now -= std::chrono::hours(2);
    library->reload();
    EXPECT_THAT(names(), ElementsAre("b.mp4", testing::AnyOf("a.mp4", "c.mp4"), testing::AnyOf("a.mp4", "c.mp4")));
}

TEST_F(LibraryScan, AnUnchangedFolderAnnouncesNothing) {
    video("a.mp4");
    open();
    int heard = 0;
    QObject::connect(library.get(), &Library::itemsChanged, library.get(), [&] { ++heard; });
    library->reload();
    EXPECT_EQ(heard, 0);
    video("b.mp4");
    library->reload();
    EXPECT_EQ(heard, 1);
}

TEST_F(LibraryScan, ARecordingWithoutAnEntryHasNoMarkersNorLink) {
    video("a.mp4");
    open();
    EXPECT_EQ(item("a.mp4").duration, 0);
    EXPECT_THAT(item("a.mp4").markers, IsEmpty());
    EXPECT_THAT(item("a.mp4").markerTitles, IsEmpty());
    EXPECT_EQ(item("a.mp4").driveLink, std::nullopt);
    EXPECT_EQ(item("a.mp4").classFolder(), std::nullopt);
}

TEST_F(LibraryScan, TheClassFolderIsThereWhenItIsOnTheDisk) {
    video("a.mp4");
    std::filesystem::create_directory(folder / "a · material");
    open();
    EXPECT_EQ(item("a.mp4").classFolder(), folder / "a · material");
}

TEST_F(LibraryScan, RecordingsCompareAndHashOverAllTheirFields) {
    video("a.mp4");
    open();
    const Recording a = item("a.mp4");
    Recording b = a;
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<Recording>()(a), std::hash<Recording>()(b));
    b.driveLink = QStringLiteral("https://a.b");
    EXPECT_NE(a, b);
    EXPECT_NE(std::hash<Recording>()(a), std::hash<Recording>()(b));
}

class LibraryLoads : public test::LibraryFixture {};

TEST_F(LibraryLoads, ThePictureIsThatAtOneSecondAndAtMost720Pixels) {
    video("a.mp4");
    writeMetadata(R"({"a.mp4": {"duration": 2.5, "markers": []}})");
    inspector.videos["a.mp4"] = {2.5, 2.4};
    open();
    EXPECT_FALSE(library->thumbnail(folder / "a.mp4"));
    settle();
    EXPECT_TRUE(library->thumbnail(folder / "a.mp4"));
    EXPECT_THAT(inspector.imagesAsked, ElementsAre("a.mp4@1.0"));
    EXPECT_EQ(inspector.sideAsked, 720);
    EXPECT_THAT(inspector.durationsAsked, IsEmpty()) << "its duration is known";
}

TEST_F(LibraryLoads, AShortRecordingShowsItsFirstPicture) {
    video("corta.mp4");
    video("dos.mp4");
    writeMetadata(R"({"corta.mp4": {"duration": 1.5, "markers": []}, "dos.mp4": {"duration": 2, "markers": []}})");
    inspector.videos["corta.mp4"] = {1.5, 1.4};
    open();
    settle();
    EXPECT_THAT(inspector.imagesAsked, testing::IsSupersetOf({"corta.mp4@0.0", "dos.mp4@0.0"}));
}

TEST_F(LibraryLoads, OneOfUnknownDurationIsAskedAtOneSecondAndFallsBackToTheFirstPicture) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {0.8, 0.7};
    open();
    settle();
    EXPECT_THAT(inspector.imagesAsked, ElementsAre("a.mp4@1.0", "a.mp4@0.0"));
    EXPECT_TRUE(library->thumbnail(folder / "a.mp4"));
}

TEST_F(LibraryLoads, APictureIsLoadedOnceWhileItIsUnderWayAndNotAgainWhenItIsThere) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {10, 9};
    open();
    library->reload();
    library->reload();
    settle();
    library->reload();
    settle();
    EXPECT_THAT(inspector.imagesAsked, ElementsAre("a.mp4@1.0"));
}

TEST_F(LibraryLoads, AFailedPictureIsTriedAgainAtTheNextScan) {
    video("a.mp4");
    open();
    settle();
    EXPECT_EQ(inspector.imagesAsked.size(), 2u);
    inspector.videos["a.mp4"] = {10, 9};
    library->reload();
    settle();
    EXPECT_TRUE(library->thumbnail(folder / "a.mp4"));
}

TEST_F(LibraryLoads, AMeasuredDurationIsSavedAndShown) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {612.4, 600};
    open();
    int heard = 0;
    QObject::connect(library.get(), &Library::itemsChanged, library.get(), [&] { ++heard; });
    settle();
    EXPECT_EQ(item("a.mp4").duration, 612.4);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(metadata()["a.mp4"].toObject(), (QJsonObject{{"duration", 612.4}, {"markers", QJsonArray{}}}));
    library->reload();
    settle();
    EXPECT_THAT(inspector.durationsAsked, ElementsAre("a.mp4"));
}

TEST_F(LibraryLoads, AVideoThatIsNoVideoStaysWithoutDurationAndPicture) {
    video("a.mp4");
    open();
    settle();
    EXPECT_EQ(item("a.mp4").duration, 0);
    EXPECT_FALSE(library->thumbnail(folder / "a.mp4"));
    EXPECT_FALSE(std::filesystem::exists(folder / ".velmo-studio.json"));
}

class LibraryWithAnUnusableDuration : public test::LibraryFixture, public testing::WithParamInterface<double> {};

TEST_P(LibraryWithAnUnusableDuration, ChangesNothing) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {GetParam(), -1};
    open();
    settle();
    EXPECT_EQ(item("a.mp4").duration, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / ".velmo-studio.json"));
}

INSTANTIATE_TEST_SUITE_P(All, LibraryWithAnUnusableDuration,
                         testing::Values(0.0, -1.0, std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::quiet_NaN()));

TEST_F(LibraryLoads, WhatArrivesForAFileThatWasRenamedMeanwhileIsDropped) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {10, 9};
    inspector.videos["b.mp4"] = {10, 9};
    open();
    ASSERT_TRUE(library->rename(item("a.mp4"), QStringLiteral("b")));
    settle();
    EXPECT_FALSE(metadata().contains("a.mp4"));
    EXPECT_EQ(item("b.mp4").duration, 10);
    EXPECT_TRUE(library->thumbnail(folder / "b.mp4"));
    EXPECT_FALSE(library->thumbnail(folder / "a.mp4"));
}

TEST_F(LibraryLoads, AMeasuredDurationDoesNotReplaceTheRecordedOne) {
    video("a.mp4");
    inspector.videos["a.mp4"] = {3, 2};
    open();
    library->add(folder / "a.mp4", 612.4, {}, {});
    settle();
    EXPECT_EQ(item("a.mp4").duration, 612.4);
}

TEST_F(LibraryLoads, ALibraryThatGoesLeavesTheRestUnread) {
    for (int i = 0; i < 50; ++i) {
        video(std::to_string(i) + ".mp4");
    }
    open();
    library.reset();
    QCoreApplication::sendPostedEvents();
    EXPECT_THAT(inspector.imagesAsked, IsEmpty());
}

} // namespace
} // namespace velmo
