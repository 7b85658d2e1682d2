#include "app/DesktopFileChooser.h"

#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QFileDialog>

#include <gmock/gmock.h>

#include <optional>

namespace velmo {
namespace {

using testing::ElementsAre;

std::vector<QFileDialog*> openDialogs() {
    std::vector<QFileDialog*> open;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QFileDialog*>(widget); dialog != nullptr && dialog->isVisible()) {
            open.push_back(dialog);
        }
    }
    return open;
}

class ShownFileChooser : public testing::Test {
protected:
    void choose() {
        chooser->chooseFiles(QStringLiteral("título"), QStringLiteral("Agregar"),
                             [this](const std::vector<std::filesystem::path>& files) { chosen = files; });
    }

    std::optional<DesktopFileChooser> chooser{std::in_place};
    std::vector<std::filesystem::path> chosen;
};

TEST_F(ShownFileChooser, AsksForAnyNumberOfFilesWithTheGivenWords) {
    choose();
    ASSERT_EQ(openDialogs().size(), 1u);
    const QFileDialog& dialog = *openDialogs()[0];
    EXPECT_EQ(dialog.windowTitle(), "título");
    EXPECT_EQ(dialog.labelText(QFileDialog::Accept), "Agregar");
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFiles);
}

TEST_F(ShownFileChooser, GivesTheFilesThatWereConfirmed) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("año.txt");
    choose();
    QFileDialog& dialog = *openDialogs().at(0);
    dialog.setDirectory(QString::fromStdString(folder.path().native()));
    dialog.selectFile(QString::fromStdString(file.native()));
    QMetaObject::invokeMethod(&dialog, "accept");
    EXPECT_THAT(chosen, ElementsAre(file));
    EXPECT_TRUE(openDialogs().empty());
}

TEST_F(ShownFileChooser, GivesNothingWhenItIsCancelled) {
    choose();
    openDialogs().at(0)->reject();
    EXPECT_TRUE(chosen.empty());
    EXPECT_TRUE(openDialogs().empty());
}

TEST_F(ShownFileChooser, ReplacesAnOpenQuestionAndEndsWithItsOwner) {
    choose();
    choose();
    EXPECT_EQ(openDialogs().size(), 1u);
    chooser.reset();
    EXPECT_TRUE(openDialogs().empty());
}

} // namespace
} // namespace velmo
