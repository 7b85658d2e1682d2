#include "library/views/LibraryWindow.h"

#include "base/SerialQueue.h"
#include "library/views/RecordingGrid.h"
#include "support/FakeAssetInspector.h"
#include "support/FakeFileActions.h"
#include "support/MemoryDefaultsStore.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "ui/Theme.h"

#include <QDir>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace velmo {
namespace {

using test::waitUntil;

/// Gives each video a slide of its own.
class Slides final : public AssetInspector {
public:
    Result<double> duration(const std::filesystem::path&) const override { return 754.0; }
    Result<FrameRef> image(const std::filesystem::path& file, double, int) const override {
        const FrameRef frame = PixelBuffer::create(PixelFormat::bgra, 720, 405);
        const PlaneView plane = frame->plane(0);
        QImage image(plane.data, plane.width, plane.height, static_cast<qsizetype>(plane.stride),
                     QImage::Format_ARGB32_Premultiplied);
        const auto hue = static_cast<int>(std::filesystem::hash_value(file) % 360);
        image.fill(QColor::fromHsv(hue, 120, 90));
        QPainter painter(&image);
        painter.setPen(QPen(Qt::white, 6));
        painter.drawEllipse(QPoint(360, 200), 150, 90);
        return frame;
    }
};

/// The real window on a real screen, judged by its pixels.
class LibraryWindowOnScreen : public testing::Test {
protected:
    Library& open(int recordings) {
        library = std::make_unique<Library>(
            folder, Library::Services{files, slides, std::make_unique<ThreadQueue>("velmo.library")});
        static const char* const kTitles[] = {"Derivadas parciales · clase 4",
                                              "Fotosíntesis: fase luminosa",
                                              "Revolución Francesa: causas",
                                              "Enlaces covalentes polares",
                                              "Python desde cero · condicionales",
                                              "Teorema de Pitágoras, demostración larga y completa",
                                              "Distribución normal"};
        for (int i = 0; i < recordings; ++i) {
            const auto file = folder.write(std::string(kTitles[i % 7]) + ".mp4", std::string(40'000 * (i + 1), 'x'));
            library->add(file, 1200.5 + 777 * i, std::vector<double>(static_cast<std::size_t>(i) * 2, 1.0), {});
        }
        library->setFocus(std::nullopt);
        window = std::make_unique<LibraryWindow>(*library, files, places, [] {});
        auto* bar = new QMenuBar;
        for (const char* name : {"Velmo Studio", "Archivo", "Edición", "Ventana", "Ayuda"}) {
            bar->addMenu(QString::fromUtf8(name));
        }
        window->setMenuBar(bar);
        return *library;
    }

    QImage shot(const char* name) {
        QImage image;
        // What is on the screen, as a user sees it, once the window is there.
        waitUntil([&] {
            image = window->screen()->grabWindow(window->winId()).toImage();
            return image.pixelColor(image.width() / 2, image.height() - 4) == Theme::navy;
        });
        const QString folderOfPictures = QCoreApplication::applicationDirPath() + QStringLiteral("/../test-pictures");
        QDir().mkpath(folderOfPictures);
        image.save(QStringLiteral("%1/%2.png").arg(folderOfPictures, QLatin1String(name)));
        return image;
    }

    test::TemporaryFolder folder;
    test::FakeFileActions files;
    Slides slides;
    test::MemoryDefaultsStore places;
    std::unique_ptr<Library> library;
    std::unique_ptr<LibraryWindow> window;
};

TEST_F(LibraryWindowOnScreen, ShowsEachRecordingsPictureOnItsCard) {
    open(7);
    window->show(std::nullopt);
    ASSERT_TRUE(waitUntil([&] {
        return std::all_of(library->items().begin(), library->items().end(),
                           [&](const Recording& each) { return bool(library->thumbnail(each.url)); });
    }));
    auto* grid = window->findChild<RecordingGrid*>();
    const QRect first = grid->visualRect(grid->model()->index(0, 0));
    const QPoint inPicture = grid->viewport()->mapTo(window.get(), first.topLeft() + QPoint(30, 40));
    const auto hue = static_cast<int>(std::filesystem::hash_value(library->items().front().url) % 360);
    QImage image;
    EXPECT_TRUE(waitUntil([&] {
        image = shot("library-grid");
        const QColor seen = image.pixelColor(inPicture * image.devicePixelRatio());
        const QColor wanted = QColor::fromHsv(hue, 120, 90);
        return std::abs(seen.red() - wanted.red()) <= 2 && std::abs(seen.green() - wanted.green()) <= 2 &&
               std::abs(seen.blue() - wanted.blue()) <= 2;
    }));
}

TEST_F(LibraryWindowOnScreen, ComesUpWithTheFocusedRecordingSelected) {
    open(7);
    const auto last = library->items().back().url;
    window->show(last);
    auto* grid = window->findChild<RecordingGrid*>();
    EXPECT_EQ(grid->currentIndex().row(), 6);
    EXPECT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
    shot("library-focus");
}

TEST_F(LibraryWindowOnScreen, CallsForTheFirstRecordingWhileThereIsNone) {
    open(0);
    window->show(std::nullopt);
    const QImage image = shot("library-empty");
    EXPECT_FALSE(image.isNull());
    EXPECT_FALSE(window->findChild<RecordingGrid*>()->isVisible());
}

TEST_F(LibraryWindowOnScreen, ComesBackWhereItStood) {
    open(1);
    window->show(std::nullopt);
    window->setGeometry(200, 150, 900, 600);
    ASSERT_TRUE(waitUntil([&] { return window->size() == QSize(900, 600); }));
    window->hide();
    const LibraryWindow next(*library, files, places, [] {});
    EXPECT_EQ(next.size(), QSize(900, 600));
}

} // namespace
} // namespace velmo
