#include "platform/desktop/DesktopFileActions.h"

#include "FakeFileManager.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <gmock/gmock.h>

#include <cstdlib>

namespace velmo {
namespace {

namespace fs = std::filesystem;

/// `xdg-open` is a script that notes what it is asked to open.
class DesktopFileActionsTest : public testing::Test {
protected:
    DesktopFileActionsTest() : path_(qgetenv("PATH")) {
        const auto opener =
            folder_.write("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" + (folder_ / "opened").string() + "'\n");
        fs::permissions(opener, fs::perms::owner_all);
        qputenv("PATH", QFile::encodeName(folder_.path().c_str()) + ":" + path_);
    }
    ~DesktopFileActionsTest() override { qputenv("PATH", path_); }

    std::string opened() {
        test::waitUntil([this] { return fs::exists(folder_ / "opened") && fs::file_size(folder_ / "opened") > 0; });
        return test::contentOf(folder_ / "opened");
    }

    test::TemporaryFolder folder_;
    QByteArray path_;
    DesktopFileActions actions_;
};

TEST_F(DesktopFileActionsTest, AFileInTheTrashCanBeBroughtBack) {
    const fs::path home = std::getenv("HOME");
    const fs::path file = home / "Videos" / "clase de álgebra.mp4";
    std::ofstream(file) << "video";
    ASSERT_TRUE(actions_.moveToTrash(file).ok());
    EXPECT_FALSE(fs::exists(file));
    const fs::path trash = fs::path(std::getenv("XDG_DATA_HOME")) / "Trash";
    EXPECT_EQ(test::contentOf(trash / "files" / "clase de álgebra.mp4"), "video");
    EXPECT_TRUE(fs::exists(trash / "info" / "clase de álgebra.mp4.trashinfo"));
}

TEST_F(DesktopFileActionsTest, AFileThatIsNotThereCannotBeMovedToTheTrash) {
    const auto moved = actions_.moveToTrash(folder_ / "gone.mp4");
    ASSERT_FALSE(moved.ok());
    EXPECT_FALSE(moved.error().text.empty());
}

TEST_F(DesktopFileActionsTest, TheFileManagerShowsTheFileItself) {
    test::FakeFileManager manager;
    const auto file = folder_.write("clase 1 #ñ.mp4");
    actions_.reveal(file);
    ASSERT_TRUE(test::waitUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(QUrl(manager.shown.first()).toLocalFile().toStdString(), file.string());
}

TEST_F(DesktopFileActionsTest, WithoutAFileManagerTheFolderIsOpened) {
    actions_.reveal(folder_.write("clase.mp4"));
    EXPECT_EQ(opened(), folder_.path().string() + "\n");
}

TEST_F(DesktopFileActionsTest, OpeningHandsTheNameOverAsItIs) {
    const auto file = folder_.write("$(clase) 'uno' & dos.mp4");
    actions_.open(file);
    EXPECT_EQ(opened(), file.string() + "\n");
}

TEST_F(DesktopFileActionsTest, AnAddressIsOpenedLikeAFile) {
    actions_.openAddress("https://velmo.studio");
    EXPECT_EQ(opened(), "https://velmo.studio\n");
}

TEST_F(DesktopFileActionsTest, TheClipboardHoldsTheFileAndNotOnlyItsName) {
    const auto file = folder_.write("clase.mp4");
    actions_.copyToClipboard(file);
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_EQ(data->urls().size(), 1);
    EXPECT_EQ(data->urls().first().toLocalFile().toStdString(), file.string());
    EXPECT_EQ(data->data("x-special/gnome-copied-files").toStdString(), "copy\nfile://" + file.string());
}

} // namespace
} // namespace velmo
