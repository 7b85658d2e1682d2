#include "classkit/views/KitSetupSection.h"

#include "classkit/ClassKit.h"
#include "classkit/views/KitDrop.h"
#include "classkit/views/internal/KitSetupRow.h"
#include "ui/Button.h"
#include "ui/SwitchRow.h"
#include "ui/TextField.h"
#include "unit/classkit/KitWorld.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

#include <gmock/gmock.h>

namespace velmo {
namespace {

class KitSetupSectionTest : public testing::Test {
protected:
    KitSetupSectionTest() { section.show(); }

    Button* button(const char* name) {
        for (Button* each : section.findChildren<Button*>()) {
            if (each->text() == QString::fromUtf8(name)) {
                return each;
            }
        }
        return nullptr;
    }
    bool shows(const char* text) {
        for (QLabel* each : section.findChildren<QLabel*>()) {
            if (each->text() == QString::fromUtf8(text)) {
                return each->isVisible();
            }
        }
        return false;
    }
    TextField* linkField() {
        for (TextField* each : section.findChildren<TextField*>()) {
            if (each->placeholderText() == QStringLiteral("Pega un link o un video de YouTube")) {
                return each;
            }
        }
        return nullptr;
    }
    TextField* titleField(std::size_t row) {
        for (KitSetupRow* each : section.findChildren<KitSetupRow*>()) {
            if (each->id() == kit.items()[row].id) {
                return each->findChild<TextField*>();
            }
        }
        return nullptr;
    }
    static void type(TextField* field, const QString& text) {
        for (const QChar letter : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(field, &press);
        }
    }
    bool drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setAccepted(false);
        QApplication::sendEvent(&section, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.setDropAction(Qt::MoveAction);
        event.setAccepted(false);
        QApplication::sendEvent(&section, &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction) << "the file manager would delete it";
        return event.isAccepted();
    }

    test::KitWorld world;
    ClassKit kit{world.store, world.services()};
    KitSetupSection section{kit};
};

constexpr const char* kHint = "Agrega tu presentación, PDF, documentos, links o videos de YouTube. Mientras grabas los "
                              "abres con un clic (⌃K) y quedan guardados con la clase.";
constexpr const char* kBadLink = "Ese link no parece válido.";

TEST_F(KitSetupSectionTest, TheHintTellsTheKeyThatTheUserChose) {
    section.setShortcutModifier(ShortcutModifier::controlAlt);
    EXPECT_FALSE(shows(kHint));
    EXPECT_TRUE(shows(QString::fromUtf8(kHint).replace(u'⌃', QStringLiteral("⌃⌥")).toUtf8().constData()));
}

TEST_F(KitSetupSectionTest, AnEmptyListShowsTheHintAndNothingToEmpty) {
    EXPECT_TRUE(shows(kHint));
    EXPECT_FALSE(button("Vaciar")->isVisible());
    kit.add(QStringLiteral("example.org"));
    EXPECT_FALSE(shows(kHint));
    EXPECT_TRUE(button("Vaciar")->isVisible());
    button("Vaciar")->click();
    EXPECT_TRUE(kit.items().empty());
    EXPECT_TRUE(shows(kHint));
}

TEST_F(KitSetupSectionTest, ABadLinkIsWarnedOfAndStaysAndAGoodOneClearsTheWarning) {
    linkField()->setText(QStringLiteral("localhost"));
    button("Agregar")->click();
    EXPECT_TRUE(shows(kBadLink));
    EXPECT_TRUE(linkField()->isBad());
    EXPECT_EQ(linkField()->text(), QStringLiteral("localhost"));
    EXPECT_TRUE(kit.items().empty());
    linkField()->setText(QStringLiteral("youtu.be/abc"));
    emit linkField()->returnPressed();
    EXPECT_FALSE(shows(kBadLink));
    EXPECT_FALSE(linkField()->isBad());
    EXPECT_EQ(linkField()->text(), QString());
    ASSERT_EQ(kit.items().size(), 1u);
    EXPECT_EQ(kit.items()[0].title, QStringLiteral("Video de YouTube"));
}

TEST_F(KitSetupSectionTest, ATypedTitleIsSavedAtOnceAndTheFieldStaysWithItsCursor) {
    kit.add(QStringLiteral("example.org/a"));
    kit.add(QStringLiteral("example.org/b"));
    TextField* field = titleField(0);
    EXPECT_EQ(field->placeholderText(), QStringLiteral("Nombre"));
    field->setCursorPosition(0);
    type(field, QStringLiteral("Guía "));
    EXPECT_EQ(kit.items()[0].title, QStringLiteral("Guía example.org/a"));
    EXPECT_EQ(ClassKit(world.store, world.services()).items()[0].title, kit.items()[0].title);
    EXPECT_EQ(titleField(0), field);
    EXPECT_EQ(field->cursorPosition(), 5);
}

TEST_F(KitSetupSectionTest, ItsButtonTakesAnItemOutAndTheOthersKeepTheirFields) {
    for (const char* address : {"example.org/a", "example.org/b", "example.org/c"}) {
        kit.add(QString::fromLatin1(address));
    }
    TextField* last = titleField(2);
    auto* remove = titleField(1)->parentWidget()->findChild<Button*>();
    EXPECT_EQ(remove->toolTip(), QStringLiteral("Quitar de la lista"));
    remove->click();
    ASSERT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(kit.items()[1].title, QStringLiteral("example.org/c"));
    EXPECT_EQ(titleField(1), last);
}

TEST_F(KitSetupSectionTest, FilesAreChosenInTheKitsDialog) {
    button("Agregar archivos…")->click();
    EXPECT_THAT(world.chooser.asked, testing::ElementsAre("Agregar material a la clase / Agregar"));
}

TEST_F(KitSetupSectionTest, TheSwitchWritesAndShowsWhetherFilesAreCopied) {
    auto* copies = section.findChild<SwitchRow*>();
    EXPECT_TRUE(copies->isOn());
    emit copies->switched(false);
    EXPECT_FALSE(kit.copyFiles());
    kit.setCopyFiles(true);
    EXPECT_TRUE(copies->isOn());
}

TEST_F(KitSetupSectionTest, DroppedFilesAndAddressesComeIntoTheListInTheirOrder) {
    EXPECT_TRUE(drop({QUrl::fromLocalFile(QStringLiteral("/home/ana/guía 1.pdf")),
                      QUrl(QStringLiteral("https://www.example.org/a%20b"))}));
    ASSERT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(kit.items()[0].location, QStringLiteral("/home/ana/guía 1.pdf"));
    EXPECT_EQ(kit.items()[1].kind, KitItem::Kind::link);
    EXPECT_EQ(kit.items()[1].title, QStringLiteral("example.org/a b"));
}

TEST_F(KitSetupSectionTest, TwoHundredDroppedFilesAreWrittenAtOnce) {
    QList<QUrl> files;
    for (int i = 0; i < 200; ++i) {
        files += QUrl::fromLocalFile(QStringLiteral("/c/lámina %1.png").arg(i));
    }
    const int before = world.store.writes();
    EXPECT_TRUE(drop(files));
    EXPECT_EQ(kit.items().size(), 200u);
    EXPECT_EQ(kit.items()[199].location, QStringLiteral("/c/lámina 199.png"));
    EXPECT_EQ(world.store.writes() - before, 1);
}

TEST_F(KitSetupSectionTest, ADroppedFileIsTakenOnceHoweverOftenItIsThere) {
    const auto file = [](const char* path) { return QUrl::fromLocalFile(QString::fromLatin1(path)); };
    kit.add({std::filesystem::path("/c")});
    EXPECT_TRUE(drop({file("/a/"), file("/b"), file("/a"), file("/c"), QUrl(QStringLiteral("https://example.org/d")),
                      file("/b"), file("/e")}));
    QStringList locations;
    for (const KitItem& item : kit.items()) {
        locations += item.location;
    }
    EXPECT_EQ(locations, QStringList({"/c", "/a", "/b", "https://example.org/d", "/e"}));
}

TEST_F(KitSetupSectionTest, WhatIsNeitherFileNorAddressIsNotTaken) {
    EXPECT_FALSE(drop({}));
    EXPECT_FALSE(drop({QUrl(QStringLiteral("mailto:ana@example.org"))}));
    EXPECT_TRUE(drop({QUrl(QStringLiteral("mailto:ana@example.org")), QUrl::fromLocalFile(QStringLiteral("/a.txt"))}));
    EXPECT_EQ(kit.items().size(), 1u);
}

TEST_F(KitSetupSectionTest, ADroppedTextIsNotTaken) {
    QMimeData data;
    data.setText(QStringLiteral("Apuntes de la clase de hoy"));
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.setAccepted(false);
    QApplication::sendEvent(&section, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(KitSetupSectionTest, ADroppedFolderAndAFileThatIsMissingAreItemsAsOthersAre) {
    const QString folder = QDir::tempPath();
    EXPECT_TRUE(drop({QUrl::fromLocalFile(folder), QUrl::fromLocalFile(QStringLiteral("/no/está/aquí.pdf"))}));
    ASSERT_EQ(kit.items().size(), 2u);
    EXPECT_EQ(kit.items()[0].kind, KitItem::Kind::file);
    EXPECT_EQ(kit.items()[0].location, folder);
    EXPECT_EQ(kit.items()[1].location, QStringLiteral("/no/está/aquí.pdf"));
    QApplication::processEvents(); // the layout shows new rows
    EXPECT_TRUE(titleField(1)->isVisibleTo(&section));
}

TEST_F(KitSetupSectionTest, AnOddTitleIsOnePlainLineAndAnEmptyOneIsKept) {
    kit.add(QStringLiteral("example.org"));
    TextField* title = titleField(0);
    title->selectAll();
    title->insert(QStringLiteral("Una\nlínea\u0007 \u202Eal revés\t<b>gorda</b>"));
    emit title->textEdited(title->text());
    EXPECT_FALSE(kit.items()[0].title.contains(QLatin1Char('\n')));
    EXPECT_FALSE(kit.items()[0].title.contains(QChar(0x202E)));
    EXPECT_FALSE(kit.items()[0].title.contains(QChar(7)));
    title->selectAll();
    title->insert(QString(100000, QLatin1Char('x')));
    EXPECT_LE(title->text().size(), TextField::kMostText);
    title->clear();
    emit title->textEdited({});
    EXPECT_EQ(kit.items()[0].title, QString());
}

TEST_F(KitSetupSectionTest, TwoHundredItemsHaveAFieldEach) {
    for (int i = 0; i < 200; ++i) {
        kit.add({std::filesystem::path("/c/lámina " + std::to_string(i) + ".png")});
    }
    QApplication::processEvents();
    EXPECT_EQ(section.findChildren<KitSetupRow*>().size(), 200);
    button("Vaciar")->click();
    QApplication::processEvents();
    EXPECT_TRUE(kit.items().empty());
}

TEST_F(KitSetupSectionTest, NoFieldSwallowsWhatIsDroppedOnIt) {
    kit.add(QStringLiteral("example.org"));
    for (TextField* field : section.findChildren<TextField*>()) {
        EXPECT_FALSE(field->acceptDrops());
    }
}

} // namespace
} // namespace velmo
