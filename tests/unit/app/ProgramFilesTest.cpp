#include "app/ProgramFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace velmo {
namespace {

class ProgramFilesTest : public testing::Test {
protected:
    QString put(const QString& place) {
        QDir(folder_.path()).mkpath(place);
        QFile file(folder_.filePath(place + "/THIRD_PARTY_NOTICES.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    QTemporaryDir folder_;
};

TEST_F(ProgramFilesTest, TheOneBesideTheProgramComesFirst) {
    const QString beside = put("bin");
    put("share/velmo-studio");
    EXPECT_EQ(programFile(folder_.filePath("bin"), kThirdPartyNotices), beside);
}

TEST_F(ProgramFilesTest, AnInstalledOneIsFoundFromTheProgramsFolder) {
    QDir(folder_.path()).mkpath("bin");
    const QString installed = put("share/velmo-studio");
    EXPECT_EQ(programFile(folder_.filePath("bin"), kThirdPartyNotices), installed);
}

TEST_F(ProgramFilesTest, AFolderIsFoundAsAFileIs) {
    QDir(folder_.path()).mkpath("bin/plantillas");
    EXPECT_EQ(programFile(folder_.filePath("bin"), kSlideTemplates), folder_.filePath("bin/plantillas"));
}

TEST_F(ProgramFilesTest, WithoutOneThereIsNothing) {
    EXPECT_EQ(programFile(folder_.filePath("bin"), kThirdPartyNotices), std::nullopt);
}

} // namespace
} // namespace velmo
