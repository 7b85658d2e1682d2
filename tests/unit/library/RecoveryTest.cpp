#include "library/Recovery.h"
#include "classkit/ClassKit.h"
#include "support/LeftRecording.h"
#include "support/LibraryFixture.h"
#include "support/SmallDisk.h"

#include <chrono>
#include <functional>

namespace velmo {
namespace {

using test::bytesOf;
using test::contentOf;
using test::LeftRecording;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RecoveryTest : public test::LibraryFixture {
protected:
    ~RecoveryTest() override { recovery_.reset(); }

    /// As at a launch of the program.
    Recovery& recover(const std::vector<KitItem>& items = {}) {
        recovery_.reset();
        open();
        auto queue = std::make_unique<test::ManualQueue>();
        test::ManualQueue& queueOfRecovery = *queue;
        recovery_ = std::make_unique<Recovery>(*library,
                                               Recovery::Services{std::move(queue),
                                                                  [this](const auto& video) {
                                                                      mixed_.push_back(video);
                                                                      onMix_(video);
                                                                  },
                                                                  [this](const auto& line) { log_.push_back(line); }});
        QObject::connect(recovery_.get(), &Recovery::finished, recovery_.get(), [this] { ++finished_; });
        recovery_->start(items, false);
        queueOfRecovery.run();
        QCoreApplication::sendPostedEvents();
        return *recovery_;
    }
    LeftRecording left(const std::string& name, std::uint8_t id = 7) {
        LeftRecording recording(folder / name, id);
        recording.record(60);
        recording.add(RecordingMark{0.5, "Marcador 1", std::nullopt});
        recording.add(RecordingMark{1.25, "guía", "/home/x/guía.pdf"});
        recording.die();
        return recording;
    }
    void age(const std::filesystem::path& file, std::chrono::hours by) {
        std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - by);
    }

    std::unique_ptr<Recovery> recovery_;
    std::vector<std::filesystem::path> mixed_;
    std::function<void(const std::filesystem::path&)> onMix_ = [](const std::filesystem::path&) {};
    std::vector<std::string> log_;
    int finished_ = 0;
};

TEST_F(RecoveryTest, WithNothingLeftBehindItIsDoneAtOnce) {
    EXPECT_TRUE(recover().isDone());
    EXPECT_THAT(recovery_->recovered(), IsEmpty());
    EXPECT_EQ(finished_, 1);
}

TEST_F(RecoveryTest, ARecordingIsMixedEnteredWithItsMarksAndSelected) {
    const LeftRecording recording = left("Clase.mp4");
    recover();
    EXPECT_THAT(recovery_->recovered(), ElementsAre(recording.video()));
    EXPECT_THAT(mixed_, ElementsAre(recording.video()));
    EXPECT_NEAR(item("Clase.mp4").duration, 2, 0.05);
    EXPECT_THAT(item("Clase.mp4").markers, ElementsAre(0.5, 1.25));
    EXPECT_EQ(item("Clase.mp4").markerTitles, (QStringList{"Marcador 1", "guía"}));
    EXPECT_EQ(library->focus(), recording.video());
    EXPECT_FALSE(std::filesystem::exists(recording.journal()));
    const auto chapters = ClassKit::chaptersOf(recording.video());
    ASSERT_TRUE(chapters);
    EXPECT_THAT(*chapters, ElementsAre(Chapter{0.5, "Marcador 1", std::nullopt},
                                       Chapter{1.25, "guía", QStringLiteral("/home/x/guía.pdf")}));
    EXPECT_THAT(recover().recovered(), IsEmpty()) << "once";
}

TEST_F(RecoveryTest, AClassFolderThatIsThereAlreadyStaysAsItIs) {
    const LeftRecording recording = left("Clase.mp4");
    ClassKit::writeFolder(recording.video(), {},
                          {{0.5, "Marcador 1", std::nullopt}, {1.25, "guía", QStringLiteral("/home/x/guía.pdf")}},
                          false);
    const auto page = ClassKit::folder(recording.video()) / "Ver la clase.html";
    std::ofstream(page) << "mine";
    recover();
    EXPECT_EQ(contentOf(page), "mine");
}

TEST_F(RecoveryTest, AnUnfinishedClassFolderIsMadeAnew) {
    const LeftRecording recording = left("Clase.mp4");
    const auto part = folder / ".Clase · material.velmo-parte";
    std::filesystem::create_directories(part / "Material");
    std::ofstream(part / "Material" / "half") << "x";
    recover();
    EXPECT_FALSE(std::filesystem::exists(part));
    EXPECT_TRUE(std::filesystem::exists(ClassKit::folder(recording.video()) / "Ver la clase.html"));
    EXPECT_FALSE(std::filesystem::exists(ClassKit::folder(recording.video()) / "Material"));
}

TEST_F(RecoveryTest, AMixedRecordingThatIsRenamedBeforeItsTurnIsEnteredUnderItsNewName) {
    left("a.mp4", 1);
    LeftRecording mixed(folder / "b.mp4", 2);
    mixed.add(RecordingMark{0.5, "Marcador 1", std::nullopt});
    mixed.add(JournalFinished{2'000'000});
    mixed.die();
    std::ofstream(mixed.video()) << "a file of its own, which does not bear the recording's identity";
    onMix_ = [this](const std::filesystem::path& video) {
        if (video == folder / "a.mp4") {
            EXPECT_FALSE(library->rename(item("a.mp4"), QStringLiteral("en obra")));
            EXPECT_TRUE(library->rename(item("b.mp4"), QStringLiteral("c")));
        }
    };
    recover();
    EXPECT_THAT(recovery_->recovered(), ElementsAre(folder / "a.mp4", folder / "c.mp4"));
    EXPECT_THAT(item("c.mp4").markers, ElementsAre(0.5));
    EXPECT_THAT(journalsIn(folder), IsEmpty());
}

TEST_F(RecoveryTest, SeveralAreRecoveredOneAfterTheOther) {
    left("b.mp4", 1);
    left("a.mp4", 2);
    recover();
    EXPECT_THAT(recovery_->recovered(), ElementsAre(folder / "a.mp4", folder / "b.mp4"));
    EXPECT_EQ(library->focus(), folder / "b.mp4");
}

TEST_F(RecoveryTest, ARecordingThatCannotBeMadeWholeIsCountedAndStays) {
    const LeftRecording recording = left("Clase.mp4");
    {
        const test::SmallDisk disk(1000);
        recover();
    }
    EXPECT_THAT(recovery_->recovered(), IsEmpty());
    EXPECT_EQ(recovery_->failures(), 1);
    EXPECT_THAT(log_, ElementsAre(testing::HasSubstr("Clase.mp4")));
    EXPECT_THAT(recover().recovered(), ElementsAre(recording.video())) << "at the next launch";
}

TEST_F(RecoveryTest, ALibraryThatCannotBeSavedKeepsTheJournalForTheNextLaunch) {
    const LeftRecording recording = left("Clase.mp4");
    writeMetadata("no es JSON");
    std::filesystem::permissions(folder, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    open();
    const bool folderIsLocked = !std::ofstream(folder / "probe").good(); // not for root
    if (folderIsLocked) {
        EXPECT_FALSE(library->add(recording.video(), 2, {}, {}));
        EXPECT_TRUE(std::filesystem::exists(recording.journal()));
    }
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    std::filesystem::remove(folder / "probe");
    EXPECT_THAT(recover().recovered(), ElementsAre(recording.video()));
}

TEST_F(RecoveryTest, LeftoversOfMixingAndCuttingGoWhenTheyAreCertainlyOursAndOld) {
    const char* const ours[] = {".mezcla-0A1B2C3D-0000-4000-8000-0123456789AB.mp4",
                                ".recorte-0A1B2C3D-0000-4000-8000-0123456789AB.mp4", "..velmo-studio.json.aB3dE6",
                                "..velmo-renombrar.aB3dE6"};
    const char* const others[] = {".mezcla-mine.mp4", ".mezcla-0a1b2c3d-0000-4000-8000-0123456789ab.mp4",
                                  ".mezcla-.mp4", "..velmo-renombrar.aB3dE67",
                                  "mezcla-0A1B2C3D-0000-4000-8000-0123456789AB.mp4"};
    for (const char* name : ours) {
        age(video(name), std::chrono::hours(2));
    }
    for (const char* name : others) {
        age(video(name), std::chrono::hours(2000));
    }
    const auto young = video(".mezcla-FFFFFFFF-0000-4000-8000-0123456789AB.mp4");
    recover();
    for (const char* name : ours) {
        EXPECT_FALSE(std::filesystem::exists(folder / name)) << name;
    }
    for (const char* name : others) {
        EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
    }
    EXPECT_TRUE(std::filesystem::exists(young)) << "somebody may be at work on it";
}

TEST_F(RecoveryTest, AddTakesTheJournalOfAFinishedRecordingAway) {
    const LeftRecording recording = left("Clase.mp4");
    open();
    EXPECT_TRUE(library->add(recording.video(), 2, {}, {}));
    EXPECT_FALSE(std::filesystem::exists(recording.journal()));
}

class CutShortRename : public test::LibraryFixture {
protected:
    /// The state between the steps of a rename from "a" to "b".
    void intend() { root.write("Velmo Studio/.velmo-renombrar", std::string("a.mp4\0b.mp4", 11)); }
    std::filesystem::path intent() const { return folder / ".velmo-renombrar"; }
    static constexpr const char* kEntryOfA = R"({"a.mp4": {"duration": 9, "markers": [3]}})";
};

TEST_F(CutShortRename, BeforeTheVideoMovedNothingHasHappened) {
    video("a.mp4");
    writeMetadata(kEntryOfA);
    intend();
    open();
    EXPECT_THAT(item("a.mp4").markers, ElementsAre(3));
    EXPECT_FALSE(std::filesystem::exists(intent()));
}

TEST_F(CutShortRename, AfterTheVideoMovedTheRestFollows) {
    video("b.mp4");
    writeMetadata(kEntryOfA);
    ClassKit::writeFolder(folder / "a.mp4", {}, {{3, "Marcador 1", std::nullopt}}, false);
    intend();
    open();
    EXPECT_THAT(item("b.mp4").markers, ElementsAre(3));
    EXPECT_EQ(metadata().keys(), QStringList{"b.mp4"});
    EXPECT_TRUE(item("b.mp4").classFolder());
    EXPECT_THAT(contentOf(folder / "b · material" / ".clase.json"), testing::HasSubstr("b.mp4"));
    EXPECT_FALSE(std::filesystem::exists(intent()));
}

TEST_F(CutShortRename, AfterTheFolderMovedItsRecordFollows) {
    video("b.mp4");
    writeMetadata(kEntryOfA);
    ClassKit::writeFolder(folder / "a.mp4", {}, {{3, "Marcador 1", std::nullopt}}, false);
    std::filesystem::rename(folder / "a · material", folder / "b · material");
    intend();
    open();
    EXPECT_THAT(contentOf(folder / "b · material" / ".clase.json"), testing::HasSubstr("b.mp4"));
}

TEST_F(CutShortRename, AfterAllWasSavedTheNewEntryStays) {
    video("b.mp4");
    writeMetadata(R"({"b.mp4": {"duration": 9, "markers": [3]}})");
    intend();
    open();
    EXPECT_THAT(item("b.mp4").markers, ElementsAre(3));
    EXPECT_FALSE(std::filesystem::exists(intent()));
}

TEST_F(CutShortRename, AnIntentThatCannotBeUnderstoodChangesNothing) {
    video("a.mp4");
    writeMetadata(kEntryOfA);
    for (const std::string& text : {std::string(""), std::string("a.mp4"), std::string("../x\0b.mp4", 10),
                                    std::string("a.mp4\0b\0c", 9), std::string("\0b.mp4", 6)}) {
        root.write("Velmo Studio/.velmo-renombrar", text);
        open();
        EXPECT_THAT(item("a.mp4").markers, ElementsAre(3));
    }
}

TEST_F(CutShortRename, ARenameThatWentWellLeavesNoIntent) {
    video("a.mp4");
    writeMetadata(kEntryOfA);
    open();
    ASSERT_TRUE(library->rename(library->items().front(), "b"));
    EXPECT_THAT(item("b.mp4").markers, ElementsAre(3));
    EXPECT_FALSE(std::filesystem::exists(intent()));
}

} // namespace
} // namespace velmo
