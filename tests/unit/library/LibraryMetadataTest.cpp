#include "library/internal/Metadata.h"
#include "support/LibraryFixture.h"

#include <QJsonArray>

namespace velmo {
namespace {

using test::contentOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LibraryMetadata : public test::LibraryFixture {};

TEST_F(LibraryMetadata, AnEntryIsReadWhole) {
    video("Clase.mp4");
    writeMetadata(R"({"Clase.mp4": {"duration": 612.4, "markers": [12.5, 300.25], "titles": ["Uno", "Dos"],
                                    "driveLink": "https://drive.example/x"}, "Otra.mp4": {"duration": 1, "markers": []}})");
    open();
    EXPECT_EQ(item("Clase.mp4").duration, 612.4);
    EXPECT_THAT(item("Clase.mp4").markers, ElementsAre(12.5, 300.25));
    EXPECT_EQ(item("Clase.mp4").markerTitles, (QStringList{"Uno", "Dos"}));
    EXPECT_EQ(item("Clase.mp4").driveLink, "https://drive.example/x");
}

TEST_F(LibraryMetadata, AddWritesTheEntryAndSetsTheFocus) {
    video("Clase.mp4");
    open();
    int focused = 0;
    QObject::connect(library.get(), &Library::focusChanged, library.get(), [&] { ++focused; });
    library->add(folder / "Clase.mp4", 0.1 + 0.2, {12.5, 7}, {"Marcador 1", "guía"});
    EXPECT_EQ(library->focus(), folder / "Clase.mp4");
    EXPECT_EQ(focused, 1);
    EXPECT_EQ(item("Clase.mp4").duration, 0.1 + 0.2);
    EXPECT_THAT(item("Clase.mp4").markers, ElementsAre(12.5, 7)) << "in order of making";
    EXPECT_EQ(metadata()["Clase.mp4"].toObject(), (QJsonObject{{"duration", 0.1 + 0.2},
                                                               {"markers", QJsonArray{12.5, 7}},
                                                               {"titles", QJsonArray{"Marcador 1", "guía"}}}));
    EXPECT_THAT(metadataText(), HasSubstr("0.30000000000000004")) << "doubles read back to the same value";
}

TEST_F(LibraryMetadata, AddWithoutChaptersWritesNoTitles) {
    video("Clase.mp4");
    open();
    library->add(folder / "Clase.mp4", 10, {5}, {});
    EXPECT_FALSE(metadata()["Clase.mp4"].toObject().contains("titles"));
    open();
    EXPECT_THAT(item("Clase.mp4").markerTitles, IsEmpty());
}

TEST_F(LibraryMetadata, AddReplacesWhatWasKnownUnderTheName) {
    video("Clase.mp4");
    writeMetadata(R"({"Clase.mp4": {"duration": 1, "markers": [1], "driveLink": "old"}})");
    open();
    library->add(folder / "Clase.mp4", 10, {}, {});
    EXPECT_EQ(item("Clase.mp4").driveLink, std::nullopt);
    EXPECT_THAT(item("Clase.mp4").markers, IsEmpty());
}

TEST_F(LibraryMetadata, ALinkIsKeptWithOrWithoutAnEntry) {
    video("a.mp4");
    open();
    library->setDriveLink(QStringLiteral("https://x"), folder / "a.mp4");
    library->setDriveLink(QStringLiteral("https://y"), folder / "no está.mp4");
    EXPECT_EQ(item("a.mp4").driveLink, "https://x");
    EXPECT_EQ(metadata()["a.mp4"].toObject()["driveLink"], QJsonValue("https://x"));
    EXPECT_EQ(metadata()["no está.mp4"].toObject(),
              (QJsonObject{{"duration", 0}, {"markers", QJsonArray{}}, {"driveLink", "https://y"}}));
}

TEST_F(LibraryMetadata, EntriesOfFilesThatHaveGoneStayAndAttachToALaterFileOfTheName) {
    writeMetadata(R"({"a.mp4": {"duration": 9, "markers": [3], "driveLink": "https://x"}})");
    open();
    video("b.mp4");
    library->add(folder / "b.mp4", 1, {}, {});
    EXPECT_TRUE(metadata().contains("a.mp4"));
    video("a.mp4");
    library->reload();
    EXPECT_THAT(item("a.mp4").markers, ElementsAre(3));
    EXPECT_EQ(item("a.mp4").driveLink, "https://x");
}

class UnreadableMetadata : public test::LibraryFixture, public testing::WithParamInterface<const char*> {};

TEST_P(UnreadableMetadata, StartsEmptyAndIsKeptAsideByTheNextSave) {
    video("a.mp4");
    writeMetadata(GetParam());
    open();
    EXPECT_EQ(item("a.mp4").duration, 0);
    EXPECT_EQ(metadataText(), GetParam()) << "nothing is touched before there is something to save";

    library->add(folder / "a.mp4", 5, {}, {});
    library->add(folder / "a.mp4", 6, {}, {});

    EXPECT_EQ(contentOf(folder / ".velmo-studio.json.damaged-1"), GetParam());
    EXPECT_FALSE(std::filesystem::exists(folder / ".velmo-studio.json.damaged-2"));
    EXPECT_EQ(metadata().keys(), QStringList{"a.mp4"});
    EXPECT_THAT(names(), ElementsAre("a.mp4")) << "what was kept is hidden";
}

INSTANTIATE_TEST_SUITE_P(All, UnreadableMetadata,
                         testing::Values("", "no es JSON", R"({"a.mp4": {"duration": 9, "mark)", "[]",
                                         R"({"a.mp4": 9})", R"({"a.mp4": {"duration": 9}})",
                                         R"({"a.mp4": {"markers": []}})",
                                         R"({"a.mp4": {"duration": "9", "markers": []}})",
                                         R"({"a.mp4": {"duration": 9, "markers": ["1"]}})",
                                         R"({"a.mp4": {"duration": 9, "markers": {}}})",
                                         R"({"a.mp4": {"duration": 9, "markers": [], "titles": "uno"}})",
                                         R"({"a.mp4": {"duration": 9, "markers": [], "titles": [1]}})",
                                         R"({"a.mp4": {"duration": 9, "markers": [], "driveLink": 5}})"));

struct Damage {
    const char* name;
    const char* json;
};

class DamagedMetadata : public test::LibraryFixture, public testing::WithParamInterface<Damage> {};

TEST_P(DamagedMetadata, KeepsTheEntriesThatAreWholeAndTheFileAside) {
    video("a.mp4");
    video("b.mp4");
    writeMetadata(GetParam().json);
    open();
    EXPECT_EQ(item("a.mp4").duration, 9);
    EXPECT_THAT(item("a.mp4").markers, ElementsAre(1, 2));
    EXPECT_EQ(item("b.mp4").duration, 0);

    library->add(folder / "b.mp4", 5, {}, {});

    EXPECT_EQ(contentOf(folder / ".velmo-studio.json.damaged-1"), GetParam().json);
    EXPECT_EQ(metadata().keys(), (QStringList{"a.mp4", "b.mp4"}));
}

INSTANTIATE_TEST_SUITE_P(
    All, DamagedMetadata,
    testing::Values(
        Damage{"ABadEntry", R"({"a.mp4": {"duration": 9, "markers": [1, 2]}, "b.mp4": {"duration": 9}})"},
        Damage{"CutOff", R"({"a.mp4":{"duration":9,"markers":[1,2]},"b.mp4":{"duration":9,"mark)"},
        Damage{"CutOffInAName", R"({"a.mp4":{"duration":9,"markers":[1,2]},"b.m)"},
        Damage{"GarbledBefore", R"({"b.mp4":{"dur$tion;9,"markers":[]},"a.mp4":{"duration":9,"markers":[1,2]}})"},
        Damage{"WithoutItsBeginning", R"(rkers":[]},"a.mp4":{"duration":9,"markers":[1,2],"titles":["}","\"{"]}})"},
        Damage{"FollowedByGarbage", R"({"a.mp4":{"duration":9,"markers":[1,2]}}garbage)"}),
    [](const auto& each) { return each.param.name; });

TEST_F(LibraryMetadata, ANameWithBytesThatNoFileHasIsWrittenAsItWasRead) {
    using namespace std::string_literals;
    const internal::MetaReading reading =
        internal::metaFromJson(QByteArray::fromStdString("{\"\0\0a.mp4\":{\"duration\":9,\"markers\":[]},"s));
    ASSERT_EQ(reading.entries.size(), 1U);

    const internal::MetaReading again = internal::metaFromJson(internal::jsonFromMeta(reading.entries));

    EXPECT_EQ(again.entries, reading.entries);
}

TEST_F(LibraryMetadata, AnUnreadableFileOnThePathIsNotReplacedWhenItCannotBeKept) {
    std::filesystem::create_directory(folder / ".velmo-studio.json");
    video("a.mp4");
    open();
    library->add(folder / "a.mp4", 5, {}, {});
    EXPECT_TRUE(std::filesystem::is_directory(folder / ".velmo-studio.json.damaged-1"));
    EXPECT_TRUE(metadata().contains("a.mp4"));
}

TEST_F(LibraryMetadata, OptionalPartsMayBeNull) {
    video("a.mp4");
    writeMetadata(R"({"a.mp4": {"duration": 9, "markers": [], "titles": null, "driveLink": null}})");
    open();
    EXPECT_EQ(item("a.mp4").duration, 9);
}

class LibraryNames : public test::LibraryFixture {};

TEST_F(LibraryNames, ARecordingIsNamedByItsMinute) {
    open();
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 15 nov 2026 a las 19.14.mp4");
    now = at(2027, 9, 3, 8, 5);
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 3 sept 2027 a las 08.05.mp4");
    now = at(2027, 5, 31, 0, 0);
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 31 may 2027 a las 00.00.mp4");
}

TEST_F(LibraryNames, TwoRecordingsOfOneMinuteHaveTwoNames) {
    open();
    video("Grabación 15 nov 2026 a las 19.14.mp4");
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 15 nov 2026 a las 19.14 (2).mp4");
    video("Grabación 15 nov 2026 a las 19.14 (2).mp4");
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 15 nov 2026 a las 19.14 (3).mp4");
}

TEST_F(LibraryNames, TheNameOfARecordingThatWaitsToBeRepairedIsTaken) {
    open();
    video(".Grabación 15 nov 2026 a las 19.14.mp4.velmo-journal");
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 15 nov 2026 a las 19.14 (2).mp4");
    video(".Grabación 15 nov 2026 a las 19.14 (2).mp4.velmo-video");
    EXPECT_EQ(library->newRecordingURL(), folder / "Grabación 15 nov 2026 a las 19.14 (3).mp4");
}

TEST_F(LibraryNames, AFolderThatWasDeletedMeanwhileIsThereForTheNextRecording) {
    open();
    std::filesystem::remove_all(folder);
    library->newRecordingURL();
    EXPECT_TRUE(std::filesystem::is_directory(folder));
}

} // namespace
} // namespace velmo
