#include "app/ThirdPartyNotices.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace velmo {
namespace {

class ThirdPartyNoticesTest : public testing::Test {
protected:
    QString put(const QString& place) {
        QDir(folder_.path()).mkpath(place);
        QFile file(folder_.filePath(place + "/THIRD_PARTY_NOTICES.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    QTemporaryDir folder_;
};

TEST_F(ThirdPartyNoticesTest, TheOneBesideTheProgramComesFirst) {
    const QString beside = put("bin");
    put("share/velmo-studio");
    EXPECT_EQ(thirdPartyNotices(folder_.filePath("bin")), beside);
}

TEST_F(ThirdPartyNoticesTest, AnInstalledOneIsFoundFromTheProgramsFolder) {
    QDir(folder_.path()).mkpath("bin");
    const QString installed = put("share/velmo-studio");
    EXPECT_EQ(thirdPartyNotices(folder_.filePath("bin")), installed);
}

TEST_F(ThirdPartyNoticesTest, WithoutOneThereIsNothing) {
    EXPECT_EQ(thirdPartyNotices(folder_.filePath("bin")), std::nullopt);
}

} // namespace
} // namespace velmo
