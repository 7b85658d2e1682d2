#include "library/views/LibraryWindow.h"

#include "library/views/EmptyLibrary.h"
#include "library/views/LibraryHead.h"
#include "library/views/RecordingGrid.h"
#include "library/views/RecordingModel.h"
#include "support/LibraryFixture.h"
#include "support/MemoryDefaultsStore.h"
#include "ui/AlertDialog.h"
#include "ui/Button.h"
#include "ui/NameDialog.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LibraryWindowTest : public test::LibraryFixture {
protected:
    /// With these videos, in whatever order their dates give.
    void openWindow(std::initializer_list<const char*> videos) {
        for (const char* name : videos) {
            video(name);
        }
        open();
        window = std::make_unique<LibraryWindow>(*library, files, places, [this] { ++begun; });
        window->show(std::nullopt);
        settleEvents();
    }
    ~LibraryWindowTest() override { window.reset(); }

    static void settleEvents() {
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    RecordingGrid& grid() const { return *window->findChild<RecordingGrid*>(); }
    RecordingModel& model() const { return *window->findChild<RecordingModel*>(); }
    int rowOf(const char* name) const { return model().rowOf(folder / name).value(); }

    void press(int key) {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&grid(), &down);
    }
    template <typename Dialog>
    Dialog* dialog() const {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            auto* found = qobject_cast<Dialog*>(each);
            if (found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    static void click(const QWidget& parent, const char* text) {
        for (Button* button : parent.findChildren<Button*>()) {
            if (button->text() == QString::fromUtf8(text)) {
                button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << text;
    }
    static QStringList textsOf(const QWidget& parent) {
        QStringList texts;
        for (const QLabel* label : parent.findChildren<QLabel*>()) {
            texts.append(label->text());
        }
        return texts;
    }

    test::MemoryDefaultsStore places;
    std::unique_ptr<LibraryWindow> window;
    int begun = 0;
};

TEST_F(LibraryWindowTest, AnEmptyLibraryCallsForTheFirstRecording) {
    openWindow({});
    auto* empty = window->findChild<EmptyLibrary*>();
    EXPECT_TRUE(empty->isVisible());
    EXPECT_FALSE(grid().isVisible());
    EXPECT_TRUE(textsOf(*window).contains(QStringLiteral("Aún no tienes grabaciones")));
    EXPECT_TRUE(textsOf(*empty).join(u' ').endsWith(QStringLiteral("› Velmo Studio")));
    click(*empty, "Grabar ahora");
    EXPECT_EQ(begun, 1);
}

TEST_F(LibraryWindowTest, TheFirstRecordingTakesTheEmptyCardsPlace) {
    openWindow({});
    video("a.mp4");
    library->reload();
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(grid().model()->rowCount(), 1);
    click(*window, "Nueva grabación");
    EXPECT_EQ(begun, 1);
}

TEST_F(LibraryWindowTest, TheHeadCountsRecordingsTheirLengthAndTheirSize) {
    Recording one;
    one.duration = 3600;
    one.size = 8'400'000'000;
    Recording two;
    two.duration = 61.9;
    EXPECT_EQ(LibraryHead::stats({}), QStringLiteral("Aún no tienes grabaciones"));
    EXPECT_EQ(LibraryHead::stats({one}), QStringLiteral("1 grabación · 1:00:00 en total · 8,4 GB"));
    EXPECT_EQ(LibraryHead::stats({one, two}), QStringLiteral("2 grabaciones · 1:01:01 en total · 8,4 GB"));
}

TEST_F(LibraryWindowTest, EnterAndADoubleClickPlay) {
    openWindow({"a.mp4"});
    grid().select(0);
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    emit grid().doubleClicked(model().index(0));
    EXPECT_THAT(files.calls, ElementsAre("open a.mp4", "open a.mp4", "open a.mp4"));
}

TEST_F(LibraryWindowTest, KeysWithoutASelectionDoNothing) {
    openWindow({});
    for (const int key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete}) {
        press(key);
    }
    EXPECT_THAT(files.calls, IsEmpty());
    EXPECT_EQ(dialog<QDialog>(), nullptr);
}

TEST_F(LibraryWindowTest, TheMenuHasItsActionsInOrder) {
    openWindow({"a.mp4"});
    emit grid().menuRequested(0, QPoint(10, 10));
    auto* menu = dialog<QMenu>();
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (QAction* action : menu->actions()) {
        if (!action->isSeparator()) {
            texts.append(action->text());
        }
    }
    EXPECT_EQ(texts,
              (QStringList{"Reproducir", "Renombrar", "Mostrar en la carpeta", "Copiar video", "Mover a la papelera"}));
    for (const int index : {0, 2, 3}) {
        menu->actions()[index]->trigger();
    }
    EXPECT_THAT(files.calls, ElementsAre("open a.mp4", "reveal a.mp4", "copy a.mp4"));
    menu->close();
    settleEvents();
}

TEST_F(LibraryWindowTest, F2RenamesAndTheRecordingStaysSelected) {
    openWindow({"a.mp4", "b.mp4"});
    grid().select(rowOf("a.mp4"));
    press(Qt::Key_F2);
    auto* rename = dialog<NameDialog>();
    ASSERT_NE(rename, nullptr);
    EXPECT_TRUE(textsOf(*rename).contains(QStringLiteral("Renombrar grabación")));
    auto* name = rename->findChild<QLineEdit*>();
    EXPECT_EQ(name->text(), "a");
    name->setText(QStringLiteral("Clase: uno"));
    click(*rename, "Guardar");
    settleEvents();
    EXPECT_EQ(grid().currentIndex().data().toString(), "Clase. uno");
    EXPECT_EQ(dialog<QDialog>(), nullptr);
}

TEST_F(LibraryWindowTest, ATakenNameIsSaidInTheGivenWords) {
    openWindow({"a.mp4", "b.mp4"});
    grid().select(rowOf("a.mp4"));
    press(Qt::Key_F2);
    auto* rename = dialog<NameDialog>();
    rename->findChild<QLineEdit*>()->setText(QStringLiteral("b"));
    click(*rename, "Guardar");
    settleEvents();
    auto* alert = dialog<AlertDialog>();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(textsOf(*alert).contains(QStringLiteral("Ya existe un video con ese nombre.")));
    click(*alert, "Aceptar");
    settleEvents();
    EXPECT_THAT(names(), testing::UnorderedElementsAre("a.mp4", "b.mp4"));
}

TEST_F(LibraryWindowTest, CancellingARenameChangesNothing) {
    openWindow({"a.mp4"});
    grid().select(0);
    press(Qt::Key_F2);
    dialog<NameDialog>()->findChild<QLineEdit*>()->setText(QStringLiteral("b"));
    click(*dialog<NameDialog>(), "Cancelar");
    settleEvents();
    EXPECT_THAT(names(), ElementsAre("a.mp4"));
}

TEST_F(LibraryWindowTest, DeleteAsksBeforeItThrowsAway) {
    openWindow({"a.mp4"});
    grid().select(0);
    press(Qt::Key_Delete);
    auto* alert = dialog<AlertDialog>();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(textsOf(*alert).contains(QStringLiteral("¿Mover a la papelera?")));
    EXPECT_TRUE(textsOf(*alert).contains(QStringLiteral("Podrás recuperarla desde la papelera de tu computadora.")));
    click(*alert, "Cancelar");
    settleEvents();
    EXPECT_THAT(names(), ElementsAre("a.mp4"));

    press(Qt::Key_Delete);
    click(*dialog<AlertDialog>(), "Mover a la papelera");
    settleEvents();
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(files.calls, ElementsAre("trash a.mp4"));
}

TEST_F(LibraryWindowTest, AFailedTrashIsSaid) {
    files.trash.clear();
    openWindow({"a.mp4"});
    grid().select(0);
    press(Qt::Key_Delete);
    click(*dialog<AlertDialog>(), "Mover a la papelera");
    settleEvents();
    auto* alert = dialog<AlertDialog>();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(textsOf(*alert).contains(QStringLiteral("No se pudo mover el video a la papelera.")));
    click(*alert, "Aceptar");
    settleEvents();
}

TEST_F(LibraryWindowTest, AFocusIsTakenUpOnceItsRecordingIsThere) {
    openWindow({"a.mp4"});
    library->setFocus(folder / "b.mp4");
    EXPECT_EQ(library->focus(), folder / "b.mp4") << "not there yet";
    video("b.mp4");
    library->reload();
    EXPECT_EQ(grid().currentIndex().row(), rowOf("b.mp4"));
    EXPECT_EQ(library->focus(), std::nullopt);
}

TEST_F(LibraryWindowTest, AFocusSetBeforeTheWindowExistsIsHonoured) {
    video("a.mp4");
    video("b.mp4");
    open();
    library->setFocus(folder / "a.mp4");
    window = std::make_unique<LibraryWindow>(*library, files, places, [] {});
    window->show(std::nullopt);
    EXPECT_EQ(grid().currentIndex().row(), rowOf("a.mp4"));
}

TEST_F(LibraryWindowTest, TheSelectedRecordingStaysSelectedWhenOthersCome) {
    openWindow({"a.mp4", "b.mp4"});
    grid().select(rowOf("a.mp4"));
    video("c.mp4");
    library->reload();
    EXPECT_EQ(grid().currentIndex().row(), rowOf("a.mp4"));
}

TEST_F(LibraryWindowTest, ScreenReadersHearWhatACardShows) {
    openWindow({"a.mp4"});
    library->add(folder / "a.mp4", 754, {1, 2}, {});
    const QString spoken = model().index(0).data(Qt::AccessibleTextRole).toString();
    EXPECT_TRUE(spoken.startsWith(QStringLiteral("a, "))) << spoken.toStdString();
    EXPECT_TRUE(spoken.endsWith(QStringLiteral(", duración 12:34, 2 marcadores"))) << spoken.toStdString();
    EXPECT_EQ(grid().accessibleName(), "Tus grabaciones");
}

TEST_F(LibraryWindowTest, AMissingFolderIsSaidWhenTheUserAsksForIt) {
    root.write("file");
    folder = root / "file" / "Velmo Studio";
    open();
    window = std::make_unique<LibraryWindow>(*library, files, places, [] {});
    window->show(std::nullopt);
    click(*window, "Carpeta");
    auto* alert = dialog<AlertDialog>();
    ASSERT_NE(alert, nullptr);
    click(*alert, "Aceptar");
    settleEvents();
}

TEST_F(LibraryWindowTest, CardsPaintWithAndWithoutPictures) {
    inspector.videos["a.mp4"] = {10, 9};
    openWindow({"a.mp4", "b.mp4"});
    settle();
    const QImage image = window->grab().toImage();
    const QRect a = grid().visualRect(model().index(rowOf("a.mp4")));
    const QRect b = grid().visualRect(model().index(rowOf("b.mp4")));
    EXPECT_GE(a.width(), 260);
    EXPECT_TRUE(a.intersected(b).isEmpty());
    const auto colorIn = [&](const QRect& card) {
        return image.pixelColor(grid().viewport()->mapTo(window.get(), card.topLeft() + QPoint(40, 40)));
    };
    EXPECT_NE(colorIn(a), colorIn(b));
}

TEST_F(LibraryWindowTest, ClosingHidesAndKeepsThePlace) {
    openWindow({});
    window->resize(900, 600);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(places.data(QStringLiteral("NSWindow Frame VelmoStudioLibrary")).has_value());
    window->show(std::nullopt);
    EXPECT_TRUE(window->isVisible());
}

} // namespace
} // namespace velmo
