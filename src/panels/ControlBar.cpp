#include "panels/ControlBar.h"

#include "panels/ClockLabel.h"
#include "panels/FlashStrip.h"
#include "panels/LevelColumns.h"
#include "panels/MicrophoneMonitor.h"
#include "panels/RecordingDot.h"
#include "settings/Format.h"
#include "ui/Button.h"
#include "ui/ScreenPlace.h"
#include "ui/Theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kRowHeight = 56;
constexpr double kRadius = 18;
constexpr int kBelowFlash = 8;
constexpr int kAboveBottom = 18;
constexpr int kFitAfter = 100; // ms

/// One pixel wide, with the room of a group's end around it.
class GroupLine final : public QWidget {
public:
    GroupLine() { setFixedSize(13, 32); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRectF(6, 0, 1, height()), Theme::border); }
};

QSpacerItem* gap(int width) {
    return new QSpacerItem(width, 0, QSizePolicy::Fixed, QSizePolicy::Minimum);
}

} // namespace

ControlBar::ControlBar(RecorderController& recorder, const MicrophoneMonitor* microphone)
    : FloatingPanel(PanelLevel::bar, {kRadius, Elevation::floating}), recorder_(recorder), microphone_(microphone) {
    setWindowTitle(QStringLiteral("Velmo Studio · controles"));
    setMovableByBackground(true);
    build();
    fit_.setSingleShot(true);
    fit_.setInterval(kFitAfter);
    connect(&fit_, &QTimer::timeout, this, &ControlBar::fitToContent);
    connect(&recorder_, &RecorderController::stateChanged, this, &ControlBar::showState);
    connect(&recorder_, &RecorderController::elapsedChanged, this, &ControlBar::showClock);
    connect(&recorder_, &RecorderController::flashChanged, this, [this] { flash_->setFlash(recorder_.flash()); });
    if (microphone_ != nullptr) {
        connect(microphone_, &MicrophoneMonitor::levelChanged, this,
                [this] { level_->setLevel(microphone_->level()); });
    }
    showState();
    showClock();
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
    auto* finish = new Button(ButtonStyle::finish, QStringLiteral("Terminar"));
    finish->setSymbol(QStringLiteral("stop.fill"));
    finish->setToolTip(QStringLiteral("Terminar y guardar (⌃G)"));
    finish->setAccessibleName(QStringLiteral("Terminar y guardar"));
    connect(finish, &Button::clicked, this, [this] { recorder_.stop(); });
    row->addWidget(finish);
}

void ControlBar::addButtons(QHBoxLayout& row) {
    int group = 0;
    for (const BarControl& control : barControls()) {
        if (control.group != group) {
            group = control.group;
            addLine(row, group);
        } else {
            row.addItem(gap(2));
        }
        auto* button = new Button(ButtonStyle::bar);
        button->setSubdued(control.weight == BarControl::Weight::subdued);
        connect(button, &Button::clicked, this, [this, &control] { (recorder_.*control.action)(); });
        row.addWidget(button);
        buttons_.push_back(button);
    }
}

void ControlBar::addLine(QHBoxLayout& row, int group) {
    lines_.push_back({new GroupLine, group});
    row.addWidget(lines_.back().widget);
}

void ControlBar::showState() {
    const BarState state{recorder_.state(), material_, drawing_};
    dot_->setPaused(state.paused());
    level_->setPaused(state.paused());
    for (Line& line : lines_) {
        const auto controls = barControls();
        line.widget->setVisible(std::any_of(controls.begin(), controls.end(), [&](const BarControl& control) {
            return control.group == line.group && control.shown(state);
        }));
    }
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const BarControl& control = barControls()[i];
        const BarControl::Face face = control.face(state);
        Button& button = *buttons_[i];
        button.setVisible(control.shown(state));
        button.setSymbol(face.symbol);
        button.setToolTip(face.help);
        button.setAccessibleName(nameOfHelp(face.help));
        button.setCheckable(face.lit);
        button.setChecked(face.lit);
    }
    fit_.start();
}

void ControlBar::setMaterial(BarState::Material material) {
    material_ = material;
    showState();
}

void ControlBar::setDrawing(bool drawing) {
    drawing_ = drawing;
    showState();
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

void ControlBar::fitToContent() {
    row_->layout()->activate();
    layout()->activate();
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
    showState();
    showClock();
    flash_->setFlash(recorder_.flash());
    fitToContent();
    const QRect free = ScreenPlace::visibleFrame(screen);
    move(free.x() + (free.width() - width()) / 2, free.y() + free.height() - kAboveBottom - height());
    QWidget::show();
}

void ControlBar::hide() {
    QWidget::hide();
}

} // namespace velmo
