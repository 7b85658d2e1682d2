#include "library/Library.h"

#include "base/SerialQueue.h"
#include "platform/desktop/DesktopFileActions.h"
#include "platform/ffmpeg/FfmpegAssetInspector.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>

namespace velmo {
namespace {

using test::contentOf;
using test::waitUntil;
using testing::IsEmpty;
using testing::SizeIs;

QString text(const std::filesystem::path& path) {
    return QString::fromStdString(path.native());
}

/// A real recording of moving colours.
void makeVideo(const std::filesystem::path& file, const char* seconds) {
    const QStringList arguments{
        "-v",   "error",   "-f",      "lavfi",     "-i",       QStringLiteral("testsrc2=s=1280x720:r=10:d=") + seconds,
        "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p",
        "-y",   text(file)};
    ASSERT_EQ(QProcess::execute(QStringLiteral("ffmpeg"), arguments), 0);
}

/// Everything real: files in the desktop's home, the inspector, the trash, the worker.
class LibraryOnDisk : public testing::Test {
protected:
    LibraryOnDisk() {
        std::filesystem::create_directories(folder);
        open();
    }
    ~LibraryOnDisk() override {
        library.reset();
        std::filesystem::remove_all(folder);
    }

    void open() {
        library.reset();
        library = std::make_unique<Library>(
            folder, Library::Services{files, inspector, std::make_unique<ThreadQueue>("velmo.library")});
    }
    bool listed(const char* name) const {
        return std::any_of(library->items().begin(), library->items().end(),
                           [&](const Recording& each) { return each.url.filename() == name; });
    }

    DesktopFileActions files;
    FfmpegAssetInspector inspector;
    std::filesystem::path folder = std::filesystem::path(std::getenv("HOME")) / "Videos" / "Velmo Studio";
    std::unique_ptr<Library> library;
};

TEST_F(LibraryOnDisk, ARealVideoGetsItsPictureAndItsDuration) {
    makeVideo(folder / "a.mp4", "3");
    library->reload();
    const auto url = folder / "a.mp4";
    ASSERT_TRUE(waitUntil([&] { return library->thumbnail(url) && library->items().front().duration > 0; }));
    EXPECT_NEAR(library->items().front().duration, 3, 0.11);
    EXPECT_EQ(library->thumbnail(url)->format(), PixelFormat::bgra);
    EXPECT_EQ(library->thumbnail(url)->width(), 720);
    EXPECT_EQ(library->thumbnail(url)->height(), 405);
    open();
    EXPECT_NEAR(library->items().front().duration, 3, 0.11) << "it was written down";
}

TEST_F(LibraryOnDisk, AVideoThatIsNoVideoStandsBetweenTheOthersWithoutAPicture) {
    std::ofstream(folder / "vacío.mp4").flush();
    std::ofstream(folder / "texto.mp4") << "esto no es un video";
    makeVideo(folder / "z.mp4", "1");
    std::filesystem::copy_file(folder / "z.mp4", folder / "cortado.mp4");
    std::filesystem::resize_file(folder / "cortado.mp4", std::filesystem::file_size(folder / "z.mp4") / 3);
    library->reload();
    EXPECT_THAT(library->items(), SizeIs(4));
    ASSERT_TRUE(waitUntil([&] { return bool(library->thumbnail(folder / "z.mp4")); }));
    for (const char* broken : {"vacío.mp4", "texto.mp4", "cortado.mp4"}) {
        EXPECT_FALSE(library->thumbnail(folder / broken)) << broken;
    }
}

TEST_F(LibraryOnDisk, WhatHappensInTheFolderShowsByItself) {
    const test::TemporaryFolder elsewhere;
    elsewhere.write("nuevo.mp4");
    std::filesystem::copy_file(elsewhere / "nuevo.mp4", folder / "nuevo.mp4");
    EXPECT_TRUE(waitUntil([&] { return listed("nuevo.mp4"); }));
    std::filesystem::rename(folder / "nuevo.mp4", folder / "otro.mp4");
    EXPECT_TRUE(waitUntil([&] { return listed("otro.mp4") && !listed("nuevo.mp4"); }));
    std::filesystem::remove(folder / "otro.mp4");
    EXPECT_TRUE(waitUntil([&] { return library->items().empty(); }));
}

TEST_F(LibraryOnDisk, ManyChangesAtOnceAreOneScan) {
    int scans = 0;
    QObject::connect(library.get(), &Library::itemsChanged, library.get(), [&] { ++scans; });
    for (int i = 0; i < 200; ++i) {
        std::ofstream(folder / (std::to_string(i) + ".mp4")) << "x";
    }
    ASSERT_TRUE(waitUntil([&] { return library->items().size() == 200; }));
    EXPECT_EQ(scans, 1);
}

TEST_F(LibraryOnDisk, AFolderThatWasDeletedAndMadeAgainIsWatchedAgainAfterAScan) {
    makeVideo(folder / "a.mp4", "1");
    ASSERT_TRUE(waitUntil([&] { return listed("a.mp4"); }));
    std::filesystem::remove_all(folder);
    ASSERT_TRUE(waitUntil([&] { return library->items().empty(); }));
    EXPECT_TRUE(std::filesystem::is_directory(library->newRecordingURL().parent_path()));
    library->reload();
    std::ofstream(folder / "b.mp4") << "x";
    EXPECT_TRUE(waitUntil([&] { return listed("b.mp4"); }));
}

TEST_F(LibraryOnDisk, TrashedVideosLieInTheDesktopsTrash) {
    makeVideo(folder / "clase para tirar.mp4", "1");
    library->reload();
    const std::string content = contentOf(library->items().front().url);
    const auto moved = library->trash(library->items().front());
    ASSERT_TRUE(moved) << moved.error().text;
    EXPECT_THAT(library->items(), IsEmpty());
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const auto trashed = std::filesystem::path(data.toStdString()) / "Trash" / "files" / "clase para tirar.mp4";
    EXPECT_TRUE(contentOf(trashed) == content);
}

TEST_F(LibraryOnDisk, ACopiedVideoIsAFileOnTheClipboard) {
    std::ofstream(folder / "ñandú.mp4") << "x";
    library->copyToPasteboard(folder / "ñandú.mp4");
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_EQ(data->urls().size(), 1);
    EXPECT_EQ(data->urls().front().toLocalFile(), text(folder / "ñandú.mp4"));
}

TEST_F(LibraryOnDisk, TheStandardFolderIsInTheUsersVideos) {
    const QString videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    EXPECT_EQ(text(Library::standardFolder()), videos + QStringLiteral("/Velmo Studio"));
}

} // namespace
} // namespace velmo
