#include "panels/ControlBar.h"

#include "panels/ClockLabel.h"
#include "panels/FlashStrip.h"
#include "panels/LevelColumns.h"
#include "panels/RecordingDot.h"
#include "panels/ZoomGroup.h"
#include "session/MicrophoneLevel.h"
#include "settings/Format.h"
#include "settings/Prefs.h"
#include "ui/Button.h"
#include "ui/PopupMenu.h"
#include "ui/ScreenPlace.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kRowHeight = 56;
constexpr double kRadius = 18;
constexpr int kBelowFlash = 8;
constexpr int kAboveBottom = 18;
constexpr int kFitAfter = 100; // ms
constexpr int kGap = 2;
constexpr int kGroupMargin = 6;
constexpr int kTightGroupMargin = 3;
constexpr int kMenuGap = 8;
constexpr int kBesideBar = 24; ///< of the screen's width, at both sides together
constexpr int kMenuIcon = 18;
const QString kFinish = QStringLiteral("Terminar");

/// One pixel wide, with the room of a group's end around it.
class GroupLine final : public QWidget {
public:
    GroupLine() { setFixedSize(1 + 2 * kGroupMargin, 32); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRect((width() - 1) / 2, 0, 1, height()), Theme::border);
    }
};

QSpacerItem* gap(int width) {
    return new QSpacerItem(width, 0, QSizePolicy::Fixed, QSizePolicy::Minimum);
}

} // namespace

ControlBar::ControlBar(Parts parts)
    : FloatingPanel(PanelLevel::bar, {kRadius, Elevation::floating}), parts_(std::move(parts)),
      recorder_(parts_.targets.recorder) {
    setWindowTitle(QStringLiteral("Velmo Studio · controles"));
    setMovableByBackground(true);
    build();
    watch();
    refresh();
    showClock();
}

void ControlBar::watch() {
    fit_.setSingleShot(true);
    fit_.setInterval(kFitAfter);
    connect(&fit_, &QTimer::timeout, this, &ControlBar::fitToContent);
    using Recorder = RecorderController;
    for (const auto changed :
         {&Recorder::stateChanged, &Recorder::sceneChanged, &Recorder::zoomOnChanged, &Recorder::zoomFollowingChanged,
          &Recorder::regionOnChanged, &Recorder::spotlightOnChanged}) {
        connect(&recorder_, changed, this, &ControlBar::refresh);
    }
    connect(&parts_.prefs, &Prefs::changed, this, &ControlBar::refresh);
    connect(&recorder_, &Recorder::zoomLevelNowChanged, this, [this] { zoom_->setLevel(recorder_.zoomLevelNow()); });
    connect(&recorder_, &Recorder::elapsedChanged, this, &ControlBar::showClock);
    connect(&recorder_, &Recorder::flashChanged, this, [this] { flash_->setFlash(recorder_.flash()); });
    if (const MicrophoneLevel* const microphone = parts_.microphone) {
        connect(microphone, &MicrophoneLevel::levelChanged, this,
                [this, microphone] { level_->setLevel(microphone->level()); });
    }
}

ControlBar::~ControlBar() = default;

void ControlBar::build() {
    QMargins room = contentsMargins();
    room.setTop(0); // the flash's own room
    setContentsMargins(room);
    // One cell for both: the flash's shadow falls on the row.
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSizeConstraint(QLayout::SetNoConstraint);
    grid->setRowMinimumHeight(0, FlashStrip::bottom() + kBelowFlash + kRowHeight);
    row_ = new QWidget;
    row_->setFixedHeight(kRowHeight);
    row_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    grid->addWidget(row_, 0, 0, Qt::AlignHCenter | Qt::AlignBottom);
    flash_ = new FlashStrip;
    grid->addWidget(flash_, 0, 0, Qt::AlignHCenter | Qt::AlignTop);
    connect(flash_, &FlashStrip::stripChanged, this, &ControlBar::outlineChanged);

    auto* row = new QHBoxLayout(row_);
    row->setContentsMargins(16, 0, 8, 0);
    row->setSpacing(0);
    row->addWidget(dot_ = new RecordingDot);
    row->addItem(gap(8));
    row->addWidget(clock_ = new ClockLabel);
    row->addItem(gap(10));
    row->addWidget(level_ = new LevelColumns);
    row->addItem(gap(2));
    addButtons(*row);
    row->addStretch();
    row->addItem(gap(10));
    finish_ = new Button(ButtonStyle::finish, kFinish);
    finish_->setSymbol(QStringLiteral("stop.fill"));
    finish_->setAccessibleName(QStringLiteral("Terminar y guardar"));
    connect(finish_, &Button::clicked, this, [this] { recorder_.stop(); });
    row->addWidget(finish_);
}

void ControlBar::addButtons(QHBoxLayout& row) {
    int group = 0;
    for (const BarControl& control : barControls()) {
        Button* const button = makeButton(control);
        buttons_.push_back(button);
        gaps_.push_back(nullptr);
        if (control.place == BarControl::Place::zoomGroup) {
            if (zoom_ == nullptr) {
                row.addWidget(zoom_ = new ZoomGroup);
            }
            zoom_->add(button);
            continue;
        }
        if (control.group != group) {
            group = control.group;
            addLine(row, group);
        } else {
            row.addItem(gaps_.back() = gap(kGap));
        }
        row.addWidget(button);
    }
}

Button* ControlBar::makeButton(const BarControl& control) {
    auto* button = new Button(ButtonStyle::bar);
    button->setSubdued(control.weight == BarControl::Weight::subdued);
    button->setHasMenu(control.menu == BarControl::Menu::onClick);
    connect(button, &Button::clicked, this, [this, &control, button] { press(control, *button); });
    if (control.menu == BarControl::Menu::onRightClick) {
        button->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(button, &QWidget::customContextMenuRequested, this,
                [this, &control, button](QPoint place) { openMenu(control, button->mapToGlobal(place)); });
    }
    return button;
}

void ControlBar::press(const BarControl& control, Button& button) {
    if (control.menu == BarControl::Menu::onClick) {
        openMenu(control, button.mapToGlobal(QPoint(0, button.height())));
        return;
    }
    // The bar never has the focus: the events that it gets tell nothing of the keyboard.
    const bool option = QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
    const BarControl::Action action = option && control.optionPress ? control.optionPress : control.press;
    action(parts_.targets, state());
}

void ControlBar::openMenu(const BarControl& control, QPoint place) {
    auto* menu = new PopupMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const BarControl::MenuEntry& entry : control.entries(state())) {
        const QString text = entry.key.isEmpty() ? entry.title : entry.title + QLatin1Char('\t') + inKeys(entry.key);
        QAction* const action = menu->addAction(text);
        if (!entry.symbol.isEmpty()) {
            const QColor& ink = entry.current ? Theme::sky : Theme::muted;
            action->setIcon(Symbol::pixmap(entry.symbol, kMenuIcon, ink, devicePixelRatioF()));
        }
        action->setCheckable(entry.current);
        action->setChecked(entry.current);
        connect(action, &QAction::triggered, this, [this, act = entry.action] { act(parts_.targets); });
    }
    menu->popup(besideRow(place, menu->sizeHint()));
}

/// Where a menu covers nothing of the bar: above it, as it stands at the bottom of the screen.
QPoint ControlBar::besideRow(QPoint place, QSize menu) const {
    const QRect row = cardGeometry();
    const bool fitsBelow = row.bottom() + kMenuGap + menu.height() <= screen()->availableGeometry().bottom();
    return {place.x(), fitsBelow ? row.bottom() + kMenuGap : row.top() - kMenuGap - menu.height()};
}

void ControlBar::addLine(QHBoxLayout& row, int group) {
    lines_.push_back({new GroupLine, group});
    row.addWidget(lines_.back().widget);
}

BarState ControlBar::state() const {
    BarState now;
    now.state = recorder_.state();
    now.mode = parts_.prefs.mode;
    now.scene = recorder_.scene();
    now.zoomOn = recorder_.zoomOn();
    now.zoomFollowing = recorder_.zoomFollowing();
    now.regionOn = recorder_.regionOn();
    now.spotlightOn = recorder_.spotlightOn();
    now.hasScript = !parts_.prefs.scriptText.value().trimmed().isEmpty();
    if (parts_.surroundings) {
        now.around = parts_.surroundings();
    }
    return now;
}

void ControlBar::refresh() {
    const BarState now = state();
    dot_->setPaused(now.paused());
    level_->setPaused(now.paused());
    const auto controls = barControls();
    for (Line& line : lines_) {
        line.widget->setVisible(std::any_of(controls.begin(), controls.end(), [&](const BarControl& control) {
            return control.group == line.group && control.shown(now);
        }));
    }
    zoom_->setVisible(usesScreen(now.mode) && now.zoomOn);
    zoom_->setLevel(recorder_.zoomLevelNow());
    finish_->setToolTip(inKeys(QStringLiteral("Terminar y guardar (⌃G)")));
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        showButton(i, now);
    }
    fit_.start();
}

/// A text in the keys that the user has chosen.
QString ControlBar::inKeys(const QString& text) const {
    return shortcutText(text, parts_.prefs.shortcutModifier);
}

void ControlBar::showButton(std::size_t index, const BarState& state) {
    const BarControl& control = barControls()[index];
    const BarControl::Face face = control.face(state);
    Button& button = *buttons_[index];
    button.setVisible(control.shown(state));
    button.setSymbol(face.symbol);
    button.setText(tightness_ < Tightness::iconsOnly ? face.label : QString());
    button.setNarrow(tightness_ >= Tightness::narrow);
    button.setToolTip(inKeys(face.help));
    button.setAccessibleName(nameOfHelp(face.help));
    button.setCheckable(face.lit);
    button.setChecked(face.lit);
}

void ControlBar::showClock() {
    const bool grows = clock_->text().size() != Format::duration(recorder_.elapsed()).size();
    clock_->setText(Format::duration(recorder_.elapsed()));
    if (grows) {
        fit_.start();
    }
}

QRect ControlBar::card() const {
    return row_ != nullptr ? row_->geometry() : contentsRect();
}

QPainterPath ControlBar::outline() const {
    QPainterPath path = FloatingPanel::outline();
    const QRectF strip = flash_->seenStrip().translated(flash_->pos());
    if (!strip.isEmpty()) {
        path.addRoundedRect(strip, strip.height() / 2, strip.height() / 2);
    }
    return path;
}

void ControlBar::apply(Tightness tightness) {
    tightness_ = tightness;
    for (const Line& line : lines_) {
        line.widget->setFixedWidth(1 + 2 * (tightness < Tightness::tight ? kGroupMargin : kTightGroupMargin));
    }
    finish_->setText(tightness < Tightness::wordless ? kFinish : QString());
    const BarState now = state();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        showButton(i, now);
        if (gaps_[i] != nullptr) {
            const bool stands = barControls()[i].shown(now) && tightness < Tightness::noGaps;
            gaps_[i]->changeSize(stands ? kGap : 0, 0, QSizePolicy::Fixed, QSizePolicy::Minimum);
        }
    }
    zoom_->layout()->activate(); // tells the row of its buttons' new widths
    row_->layout()->invalidate();
    row_->layout()->activate();
    layout()->activate();
}

void ControlBar::fitToContent() {
    for (const Tightness each : {Tightness::roomy, Tightness::noGaps, Tightness::iconsOnly, Tightness::tight,
                                 Tightness::narrow, Tightness::wordless}) {
        apply(each);
        if (freeWidth_ == 0 || row_->layout()->totalSizeHint().width() <= freeWidth_ - kBesideBar) {
            break;
        }
    }
    const QSize wanted = layout()->totalSizeHint().expandedTo({kLeastWidth, kLeastHeight});
    if (wanted != size()) {
        const QRect now = geometry();
        setGeometry(now.center().x() + 1 - wanted.width() / 2, now.bottom() + 1 - wanted.height(), wanted.width(),
                    wanted.height());
    }
    layout()->activate();
    shapeChanged();
}

void ControlBar::show(const Screen& screen) {
    const QRect free = ScreenPlace::visibleFrame(screen);
    freeWidth_ = free.width();
    refresh();
    showClock();
    flash_->setFlash(recorder_.flash());
    fitToContent();
    move(free.x() + (free.width() - width()) / 2, free.y() + free.height() - kAboveBottom - height());
    QWidget::show();
}

void ControlBar::hide() {
    QWidget::hide();
}

} // namespace velmo
