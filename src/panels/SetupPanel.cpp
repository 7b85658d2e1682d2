#include "panels/SetupPanel.h"

#include "panels/ResolutionRow.h"
#include "panels/SetupCard.h"
#include "session/MicrophoneLevel.h"
#include "session/RecorderController.h"
#include "ui/Button.h"
#include "ui/Disclosure.h"
#include "ui/FittingScrollArea.h"
#include "ui/Label.h"
#include "ui/LevelMeter.h"
#include "ui/LogoMark.h"
#include "ui/ModeTile.h"
#include "ui/Painting.h"
#include "ui/Picker.h"
#include "ui/ScreenPlace.h"
#include "ui/SwitchRow.h"
#include "ui/Theme.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

constexpr int kWidth = 380;
constexpr int kPadding = 20;
constexpr int kHead = 56;
constexpr int kFromRight = 20;
constexpr int kFromTop = 12;
constexpr int kDevicesEvery = 1000; // ms
constexpr const char* kMoreKey = "panel.mas";
constexpr const char* kNoDevice = "none";

QString screenTitle(const Screen& screen, std::size_t index) {
    return QStringLiteral("Pantalla %1 · %2 × %3")
        .arg(index + 1)
        .arg(screen.frame.width * screen.backingScaleFactor)
        .arg(screen.frame.height * screen.backingScaleFactor);
}

} // namespace

SetupPanel::SetupPanel(Parts parts) : DialogWindow({Theme::bg, 16, Elevation::floating}), parts_(std::move(parts)) {
    setWindowTitle(QStringLiteral("Nueva grabación"));
    // No more room for the shadow than the panel's place leaves to the screen's edge: window managers push a window
    // back whose edge is off the screen. The rest of the shadow is too faint to be missed.
    QMargins around = contentsMargins();
    around.setTop(std::min(around.top(), kFromTop));
    around.setRight(std::min(around.right(), kFromRight));
    setContentsMargins(around);
    setFixedWidth(kWidth + around.left() + around.right());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHead());
    scroll_ = new FittingScrollArea(makeColumn());
    scroll_->setFixedWidth(kWidth);
    column->addWidget(scroll_);
    connect(scroll_, &FittingScrollArea::heightChanged, this, &SetupPanel::fit, Qt::QueuedConnection);
    connect(this, &QDialog::rejected, this, [this] { parts_.recorder.closeSetup(); });
    connect(&parts_.prefs, &Prefs::changed, this, &SetupPanel::refresh);
    connect(&parts_.microphone, &MicrophoneLevel::levelChanged, this,
            [this] { meter_->setLevel(parts_.microphone.level()); });
    devicesTimer_.setInterval(kDevicesEvery);
    connect(&devicesTimer_, &QTimer::timeout, this, &SetupPanel::refreshMicrophones);
    refresh();
}

SetupPanel::~SetupPanel() = default;

QWidget* SetupPanel::makeHead() {
    auto* head = new QWidget;
    head->setFixedHeight(kHead);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(kPadding, 8, kPadding, 0);
    row->setSpacing(12);
    row->addWidget(new LogoMark(26));
    row->addWidget(makeLabel(windowTitle(), TextStyle::panelTitle, Theme::sand), 1);
    auto* close = new Button(ButtonStyle::icon);
    close->setSymbol(QStringLiteral("xmark"));
    close->setAccessibleName(QStringLiteral("Cerrar"));
    close->setToolTip(QStringLiteral("Cerrar"));
    connect(close, &Button::clicked, this, &QDialog::reject);
    row->addWidget(close);
    return head;
}

QWidget* SetupPanel::makeColumn() {
    auto* contents = new QWidget;
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 8, 0, 0);
    column->setSpacing(0);
    auto* basics = new QVBoxLayout;
    basics->setContentsMargins(kPadding, 0, kPadding, 12);
    basics->setSpacing(12);
    addModes(*basics);
    addMicrophone(*basics);
    column->addLayout(basics);
    addStart(*column);
    addFoot(*column);
    addCards(*column);
    return contents;
}

void SetupPanel::addModes(QVBoxLayout& column) {
    if (parts_.modes.size() < 2) {
        return;
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (const RecordMode mode : parts_.modes) {
        auto* tile = new ModeTile(symbol(mode), title(mode));
        connect(tile, &QAbstractButton::clicked, this, [this, mode] {
            parts_.prefs.mode = mode;
            parts_.recorder.previewChanged();
        });
        row->addWidget(tile);
        tiles_.push_back(tile);
    }
    column.addLayout(row);
}

void SetupPanel::addMicrophone(QVBoxLayout& column) {
    microphone_ = new Picker(QStringLiteral("mic.fill"), QStringLiteral("Micrófono"));
    connect(microphone_, &Picker::opening, this, &SetupPanel::refreshMicrophones);
    connect(microphone_, &Picker::picked, this, [this](const QString& id) {
        parts_.prefs.micID = id;
        parts_.recorder.previewChanged();
    });
    column.addWidget(microphone_);

    meterRow_ = new QWidget;
    auto* meterColumn = new QVBoxLayout(meterRow_);
    meterColumn->setContentsMargins(0, 0, 0, 0);
    meterColumn->setSpacing(4);
    meterColumn->addWidget(meter_ = new LevelMeter);
    meterColumn->addWidget(
        makeWrappedLabel(QStringLiteral("Habla: si se mueve, te escucha"), TextStyle::caption, Theme::muted));
    column.addWidget(meterRow_);
}

void SetupPanel::addStart(QVBoxLayout& column) {
    auto* start = new Button(ButtonStyle::primaryLarge, QStringLiteral("Comenzar grabación"));
    start->setSymbol(QStringLiteral("circle.fill"));
    connect(start, &Button::clicked, this, [this] { parts_.recorder.start(); });
    auto* caption = makeWrappedLabel(QStringLiteral("Todo se guarda solo · ⌃G para empezar o terminar"),
                                     TextStyle::caption, Theme::muted);
    caption->setAlignment(Qt::AlignCenter);
    auto* box = new QVBoxLayout;
    box->setContentsMargins(kPadding - Button::kRoom, 0, kPadding - Button::kRoom, 12);
    box->setSpacing(2);
    box->addWidget(start);
    box->addWidget(caption);
    column.addLayout(box);
}

void SetupPanel::addFoot(QVBoxLayout& column) {
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(8, 5, 8, 5);
    foot->addStretch();
    more_ = new Disclosure({}, QStringLiteral("Menos opciones"), Disclosure::Chevron::behindText);
    foot->addWidget(more_);
    column.addSpacing(1); // the line that paintEvent draws
    column.addLayout(foot);
    connect(more_, &QAbstractButton::toggled, this, [this](bool more) {
        parts_.prefs.store().setBoolean(QString::fromLatin1(kMoreKey), more);
        showMoreOptions(more);
    });
}

void SetupPanel::addCards(QVBoxLayout& column) {
    cards_ = new QWidget;
    auto* cards = new QVBoxLayout(cards_);
    cards->setContentsMargins(kPadding, 4, kPadding, kPadding);
    cards->setSpacing(12);
    cards->addWidget(makeScreenCard());
    cards->addWidget(makeVideoCard());
    for (const Section& section : parts_.sections) {
        cards->addWidget(makeCard(section));
    }
    column.addWidget(cards_);
    const bool more = parts_.prefs.store().boolean(QString::fromLatin1(kMoreKey)).value_or(false);
    more_->setChecked(more);
    showMoreOptions(more);
}

QWidget* SetupPanel::makeScreenCard() {
    auto* card = new SetupCard(
        {QStringLiteral("Pantalla y cámaras"), QStringLiteral("display"), QStringLiteral("panel.fuentes"), false},
        parts_.prefs.store());
    screen_ = new Picker(QStringLiteral("display"), QStringLiteral("Pantalla"));
    connect(screen_, &Picker::opening, this, &SetupPanel::refreshScreens);
    connect(screen_, &Picker::picked, this, [this](const QString& id) { parts_.prefs.displayID = id.toLongLong(); });
    auto* column = new QVBoxLayout;
    column->setContentsMargins(0, 0, SetupCard::kSwitchRoom, 0);
    column->setSpacing(6);
    column->addWidget(makeLabel(QStringLiteral("Pantalla"), TextStyle::chip, Theme::muted));
    column->addWidget(screen_);
    card->body().addLayout(column);
    return card;
}

QWidget* SetupPanel::makeVideoCard() {
    auto* card =
        new SetupCard({QStringLiteral("Calidad y sonido"), QStringLiteral("film"), QStringLiteral("panel.video"), true},
                      parts_.prefs.store());
    Prefs& prefs = parts_.prefs;
    card->body().addWidget(resolution_ = new ResolutionRow(prefs));
    card->body().addWidget(makeSwitch(prefs.fps60, QStringLiteral("Movimiento más fluido (60 cuadros por segundo)")));
    card->body().addWidget(makeSwitch(prefs.systemAudio, QStringLiteral("Grabar el sonido de la computadora"),
                                      QStringLiteral("Por ejemplo, el audio de un video que muestras en la clase.")));
    card->body().addWidget(makeSwitch(prefs.countdown, QStringLiteral("Cuenta regresiva 3·2·1")));
    return card;
}

QWidget* SetupPanel::makeCard(const Section& section) {
    auto* card = new SetupCard(section.head, parts_.prefs.store());
    QMargins around = card->body().contentsMargins();
    around.setLeft(around.left() - Button::kRoom);
    card->body().setContentsMargins(around);
    card->body().addWidget(section.make());
    return card;
}

SwitchRow* SetupPanel::makeSwitch(Setting<bool>& setting, const QString& text, const QString& hint) {
    auto* row = new SwitchRow(text, hint);
    connect(row, &SwitchRow::switched, this, [&setting](bool on) { setting = on; });
    refreshes_.push_back([row, &setting] { row->setOn(setting.value()); });
    return row;
}

void SetupPanel::refresh() {
    for (std::size_t i = 0; i < tiles_.size(); ++i) {
        tiles_[i]->setChecked(parts_.modes[i] == parts_.prefs.mode.value());
    }
    refreshMicrophones();
    refreshScreens();
    for (const auto& each : refreshes_) {
        each();
    }
    resolution_->setScreen(targetScreen());
}

void SetupPanel::refreshMicrophones() {
    std::vector<Picker::Choice> choices;
    for (const AudioDevice& device : parts_.devices.microphones()) {
        choices.push_back({QString::fromStdString(device.uniqueID), QString::fromStdString(device.name)});
    }
    choices.push_back({QString::fromLatin1(kNoDevice), QStringLiteral("Sin micrófono")});
    const std::optional<AudioDevice> chosen = parts_.devices.microphone(parts_.prefs.micID.value());
    const QString current = chosen ? QString::fromStdString(chosen->uniqueID) : QString::fromLatin1(kNoDevice);
    if (choices != microphone_->choices() || current != microphone_->current()) {
        microphone_->setChoices(std::move(choices), current);
    }
    meterRow_->setVisible(chosen.has_value());
}

void SetupPanel::refreshScreens() {
    std::vector<Picker::Choice> choices{{QStringLiteral("0"), QStringLiteral("Pantalla principal")}};
    const std::vector<Screen> screens = parts_.screens.all();
    for (std::size_t i = 1; i < screens.size(); ++i) {
        choices.push_back({QString::number(screens[i].displayID), screenTitle(screens[i], i)});
    }
    screen_->setChoices(std::move(choices), QString::number(parts_.prefs.displayID.value()));
    screen_->setEnabled(usesScreen(parts_.prefs.mode.value()));
}

std::optional<Screen> SetupPanel::targetScreen() const {
    const std::vector<Screen> screens = parts_.screens.all();
    const auto chosen = std::find_if(screens.begin(), screens.end(), [this](const Screen& screen) {
        return screen.displayID == parts_.prefs.displayID.value();
    });
    if (chosen != screens.end()) {
        return *chosen;
    }
    return screens.empty() ? std::nullopt : std::optional(screens.front());
}

void SetupPanel::showMoreOptions(bool more) {
    more_->setText(more ? QStringLiteral("Menos opciones") : QStringLiteral("Más opciones"));
    cards_->setVisible(more);
}

QRect SetupPanel::freePlace() const {
    const std::vector<Screen> screens = parts_.screens.all();
    return screens.empty() ? QGuiApplication::primaryScreen()->availableGeometry()
                           : ScreenPlace::visibleFrame(screens.front());
}

void SetupPanel::fit() {
    const QRect free = freePlace();
    const int top = isVisible() ? pos().y() + card().top() : free.top() + kFromTop;
    scroll_->setMostHeight(std::max(200, free.bottom() - kFromTop - top - kHead));
    layout()->activate();
    resize(sizeHint());
}

void SetupPanel::show() {
    refresh();
    if (!isVisible()) {
        fit();
        place();
    }
    devicesTimer_.start();
    bringToFront();
}

void SetupPanel::place() {
    const QRect free = freePlace();
    move(free.right() + 1 - kFromRight - card().width() - card().left(), free.top() + kFromTop - card().top());
}

void SetupPanel::hide() {
    devicesTimer_.stop();
    QDialog::hide();
}

void SetupPanel::paintEvent(QPaintEvent* event) {
    DialogWindow::paintEvent(event);
    QPainter painter(this);
    const int y = more_->mapTo(this, QPoint(0, -6)).y();
    const QRect box = card();
    if (y > box.top() + kHead) {
        Painting::hairline(painter, QPointF(box.left() + 1, y), QPointF(box.right(), y), Theme::border);
    }
}

} // namespace velmo
