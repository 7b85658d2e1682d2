#include "library/views/LibraryWindow.h"

#include "base/AppName.h"
#include "library/views/Backdrop.h"
#include "library/views/EmptyLibrary.h"
#include "library/views/LibraryHead.h"
#include "library/views/RecordingGrid.h"
#include "library/views/RecordingModel.h"
#include "platform/PlatformWords.h"
#include "ui/AlertDialog.h"
#include "ui/NameDialog.h"
#include "ui/PopupMenu.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QGuiApplication>
#include <QIcon>
#include <QItemSelectionModel>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace velmo {

namespace {

constexpr QSize kSize(1200, 800);
constexpr QSize kLeastSize(820, 560);
constexpr int kTitleBar = 32; // of the window manager, whose frame is not known before the window is shown
constexpr int kPagePadding = 36;
constexpr int kHeadTop = 28;
// The cells of the grid hold half a gap around each card; the scroll bar stands in the padding.
constexpr QMargins kGridMargins(kPagePadding - 10, 6, kPagePadding - 10 - 13, 0);

constexpr int kMostName = 255; // of a file
const QString kPlaceKey = QStringLiteral("NSWindow Frame VelmoStudioLibrary");

QString menuBarSheet() {
    return QStringLiteral("QMenuBar { background: %1; color: %2; border-bottom: 1px solid %3; padding: 0 8px; }"
                          "QMenuBar::item { background: transparent; padding: 5px 10px; border-radius: 7px; }"
                          "QMenuBar::item:selected { background: %4; }")
        .arg(Theme::navyDeep.name(), Theme::sand.name(), Theme::border.name(QColor::HexArgb),
             Theme::surface2.name(QColor::HexArgb));
}

/// "Videos › Velmo Studio"
QString placeText(const std::filesystem::path& folder) {
    const auto name = [](const std::filesystem::path& path) {
        return QString::fromStdString(path.filename().native());
    };
    return name(folder.parent_path()) + QStringLiteral(" › ") + name(folder);
}

QIcon menuIcon(const QString& symbol, double ratio) {
    return Symbol::pixmap(symbol, 16, Theme::muted, ratio);
}

} // namespace

LibraryWindow::LibraryWindow(Library& library, FileActions& files, DefaultsStore& places,
                             std::function<void()> newRecording)
    : library_(library), files_(files), places_(places), newRecording_(std::move(newRecording)),
      model_(new RecordingModel(library, this)), grid_(new RecordingGrid(*model_)), head_(new LibraryHead),
      pages_(new QStackedWidget) {
    setWindowTitle(QString::fromUtf8(AppName::current));
    setObjectName(QStringLiteral("LibraryWindow"));
    setStyleSheet(menuBarSheet());
    setFont(Type::font(TextStyle::body));
    setCentralWidget(makeContent());
    restorePlace();

    connect(head_, &LibraryHead::folderRequested, this, &LibraryWindow::openFolder);
    connect(head_, &LibraryHead::newRecordingRequested, this, [this] { newRecording_(); });
    connect(grid_, &RecordingGrid::playRequested, this, [this](int row) { play(model_->recording(row)); });
    connect(grid_, &RecordingGrid::renameRequested, this, [this](int row) { rename(model_->recording(row)); });
    connect(grid_, &RecordingGrid::trashRequested, this, [this](int row) { trash(model_->recording(row)); });
    connect(grid_, &RecordingGrid::menuRequested, this,
            [this](int row, QPoint at) { openMenu(model_->recording(row), at); });
    connect(grid_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& now) {
        if (now.isValid()) {
            current_ = model_->recording(now.row()).url;
        }
    });
    connect(&library_, &Library::itemsChanged, this, &LibraryWindow::libraryChanged);
    connect(&library_, &Library::focusChanged, this, &LibraryWindow::openFocus);
    libraryChanged();
}

LibraryWindow::~LibraryWindow() = default;

void LibraryWindow::setShortcutModifier(ShortcutModifier modifier) {
    empty_->setShortcutModifier(modifier);
}

QWidget* LibraryWindow::makeContent() {
    empty_ = new EmptyLibrary(placeText(library_.folder()));
    connect(empty_, &EmptyLibrary::recordRequested, this, [this] { newRecording_(); });
    auto* gridPage = new QWidget;
    auto* gridRow = new QVBoxLayout(gridPage);
    gridRow->setContentsMargins(kGridMargins);
    gridRow->addWidget(grid_);
    pages_->addWidget(empty_);
    pages_->addWidget(gridPage);

    auto* headRow = new QVBoxLayout;
    headRow->setContentsMargins(kPagePadding, kHeadTop, kPagePadding, 12);
    headRow->addWidget(head_);

    auto* content = new Backdrop;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(headRow);
    column->addWidget(pages_, 1);
    return content;
}

void LibraryWindow::restorePlace() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QSize frame(0, kTitleBar);
    const QRect free = screen ? screen->availableGeometry() : QRect(QPoint(), kSize);
    setMinimumSize(kLeastSize.boundedTo(free.size() - frame));
    const auto place = places_.data(kPlaceKey);
    if (place && restoreGeometry(*place)) {
        return;
    }
    resize(kSize.boundedTo(free.size() - frame));
    move(free.center() - QRect(QPoint(), size() + frame).center());
}

void LibraryWindow::show(std::optional<std::filesystem::path> focus) {
    if (focus) {
        library_.setFocus(std::move(focus));
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    QMainWindow::show();
    raise();
    activateWindow();
}

void LibraryWindow::hide() {
    QMainWindow::hide();
}

void LibraryWindow::hideEvent(QHideEvent* event) {
    places_.setData(kPlaceKey, saveGeometry());
    QMainWindow::hideEvent(event);
}

void LibraryWindow::libraryChanged() {
    head_->setRecordings(library_.items());
    pages_->setCurrentIndex(library_.items().empty() ? 0 : 1);
    if (const auto row = current_ ? model_->rowOf(*current_) : std::nullopt) {
        grid_->setCurrentIndex(model_->index(*row));
    }
    openFocus();
}

void LibraryWindow::openFocus() {
    const auto row = library_.focus() ? model_->rowOf(*library_.focus()) : std::nullopt;
    if (row) {
        grid_->select(*row);
        grid_->setFocus();
        library_.setFocus(std::nullopt);
    }
}

void LibraryWindow::openMenu(Recording recording, QPoint globalPosition) {
    struct Entry {
        QString text;
        const char* symbol;
        std::function<void()> action;
    };
    const Entry entries[] = {
        {QStringLiteral("Reproducir"), "play.fill", [this, recording] { play(recording); }},
        {QStringLiteral("Renombrar"), "pencil", [this, recording] { rename(recording); }},
        {QString::fromUtf8(PlatformWords::kRevealFile.here), "folder",
         [this, recording] { library_.reveal(recording.url); }},
        {QStringLiteral("Copiar video"), "doc.on.doc", [this, recording] { library_.copyToPasteboard(recording.url); }},
        {QStringLiteral("Mover a la papelera"), "trash", [this, recording] { trash(recording); }},
    };
    auto* menu = new PopupMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Entry& entry : entries) {
        if (&entry == std::end(entries) - 1) {
            menu->addSeparator();
        }
        menu->addAction(menuIcon(QString::fromLatin1(entry.symbol), devicePixelRatioF()), entry.text, this,
                        entry.action);
    }
    menu->popup(globalPosition);
}

void LibraryWindow::play(const Recording& recording) {
    files_.open(recording.url);
}

void LibraryWindow::rename(Recording recording) {
    auto* dialog = new NameDialog(
        {.title = QStringLiteral("Renombrar grabación"), .name = recording.title(), .mostText = kMostName}, this);
    connect(dialog, &NameDialog::saved, this, [this, recording](const QString& title) {
        if (const auto renamed = library_.rename(recording, title)) {
            library_.setFocus(renamed.value());
        } else {
            inform(renamed.error().text);
        }
    });
    dialog->present();
}

void LibraryWindow::trash(Recording recording) {
    auto* dialog = new AlertDialog({AlertDialog::Icon::loss,
                                    QStringLiteral("¿Mover a la papelera?"),
                                    QString::fromUtf8(PlatformWords::kTrashKeeps.here),
                                    {QStringLiteral("Mover a la papelera"), QStringLiteral("Cancelar")},
                                    AlertDialog::First::isDestructive},
                                   this);
    connect(dialog, &AlertDialog::chosen, this, [this, recording](int button) {
        if (button != 0) {
            return;
        }
        if (const auto moved = library_.trash(recording); !moved) {
            inform(moved.error().text);
        }
    });
    dialog->present();
}

void LibraryWindow::openFolder() {
    if (const auto opened = library_.openFolder(); !opened) {
        inform(opened.error().text);
    }
}

void LibraryWindow::inform(const std::string& message) {
    auto* dialog = new AlertDialog(
        {AlertDialog::Icon::warning, QString::fromStdString(message), {}, {QStringLiteral("Aceptar")}}, this);
    dialog->present();
}

} // namespace velmo
