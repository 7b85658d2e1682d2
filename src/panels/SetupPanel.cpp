#include "panels/SetupPanel.h"

#include "panels/setup/BasicRows.h"
#include "panels/setup/DevicesSection.h"
#include "panels/setup/ModePicker.h"
#include "panels/setup/ProfilesMenu.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupCards.h"
#include "panels/setup/ShortcutKeyRow.h"
#include "session/RecorderController.h"
#include "ui/Button.h"
#include "ui/Disclosure.h"
#include "ui/FittingScrollArea.h"
#include "ui/Label.h"
#include "ui/LogoMark.h"
#include "ui/Painting.h"
#include "ui/ScreenPlace.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kWidth = 380;
constexpr int kPadding = 20;
constexpr int kHead = 56;
constexpr int kFromRight = 20;
constexpr int kFromTop = 12;
constexpr int kLeastHeight = 200;
constexpr const char* kMoreKey = "panel.mas";

} // namespace

SetupPanel::SetupPanel(SetupContext context, std::vector<SetupSection> material)
    : DialogWindow({Theme::bg, 16, Elevation::floating}), context_(std::move(context)),
      height_(this, Fade::kPanel, QEasingCurve::OutCubic, [this] { follow(); }) {
    setWindowTitle(QStringLiteral("Nueva grabación"));
    setAccessibleName(windowTitle());
    // No more room for the shadow than the panel's place leaves to the screen's edge: window managers push a window
    // back whose edge is off the screen. The rest of the shadow is too faint to be missed.
    QMargins around = contentsMargins();
    around.setTop(std::min(around.top(), kFromTop));
    around.setRight(std::min(around.right(), kFromRight));
    setContentsMargins(around);
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    QWidget* head = makeHead();
    scroll_ = new FittingScrollArea(makeColumn(std::move(material)));
    scroll_->setFixedWidth(Type::scaled(kWidth));
    scroll_->setAccessibleName(windowTitle());
    scroll_->setMinimumHeight(kLeastHeight); // else its content would be the least on the way, too
    column->addWidget(head);
    column->addWidget(scroll_);
    column->setSizeConstraint(QLayout::SetNoConstraint); // the height follows what it holds, step by step
    connect(scroll_, &FittingScrollArea::heightChanged, this, &SetupPanel::fit, Qt::QueuedConnection);
    followScreens();
    connect(this, &QDialog::rejected, this, [this] { context_.recorder.closeSetup(); });
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

QWidget* SetupPanel::makeColumn(std::vector<SetupSection> material) {
    auto* contents = new QWidget;
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 8, 0, 0);
    column->setSpacing(0);
    auto* basics = new QVBoxLayout;
    basics->setContentsMargins(kPadding - Rows::kRoom, 0, kPadding - Rows::kRoom, 12);
    basics->setSpacing(Rows::kGap);
    basics->addWidget(new ModePicker(context_));
    basics->addWidget(new DevicesSection(context_));
    BasicRows::addTo(*basics, context_);
    column->addLayout(basics);
    addStart(*column);
    addFoot(*column);
    addCards(*column, std::move(material));
    column->addStretch(1); // a panel on its way down is higher than what is left in it
    return contents;
}

void SetupPanel::addStart(QVBoxLayout& column) {
    auto* start = new Button(ButtonStyle::primaryLarge, QStringLiteral("Comenzar grabación"));
    start->setSymbol(QStringLiteral("circle.fill"));
    connect(start, &Button::clicked, this, [this] { context_.recorder.start(); });
    auto* caption = makeWrappedLabel({}, TextStyle::caption, Theme::muted);
    caption->setAlignment(Qt::AlignCenter);
    Rows::follow(*caption, context_.prefs, {&context_.prefs.shortcutModifier}, [this, caption] {
        caption->setText(shortcutText(QStringLiteral("Todo se guarda solo · ⌃G para empezar o terminar"),
                                      context_.prefs.shortcutModifier));
    });
    auto* box = new QVBoxLayout;
    box->setContentsMargins(kPadding - Button::kRoom, 0, kPadding - Button::kRoom, 12);
    box->setSpacing(2);
    box->addWidget(start);
    box->addWidget(caption);
    column.addLayout(box);
}

void SetupPanel::addFoot(QVBoxLayout& column) {
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(12, 5, 12, 5);
    foot->addWidget(new ProfilesMenu(context_.profiles));
    foot->addStretch();
    more_ = new Disclosure({}, QStringLiteral("Menos opciones"), Disclosure::Chevron::behindText);
    foot->addWidget(more_);
    column.addSpacing(1); // the line that paintEvent draws
    column.addLayout(foot);
    connect(more_, &QAbstractButton::toggled, this, [this](bool more) {
        context_.prefs.store().setBoolean(QString::fromLatin1(kMoreKey), more);
        showMoreOptions(more);
    });
}

void SetupPanel::addCards(QVBoxLayout& column, std::vector<SetupSection> material) {
    cards_ = new QWidget;
    auto* cards = new QVBoxLayout(cards_);
    cards->setContentsMargins(kPadding - Rows::kRoom, 4, kPadding - Rows::kRoom, kPadding);
    cards->setSpacing(Rows::kGap);
    Prefs& prefs = context_.prefs;
    for (const SetupSection& section : setupCards(context_, std::move(material))) {
        auto* card = new SetupCard(section.head, prefs.store(), section.make());
        Rows::add(*cards, card);
        Rows::follow(*card, prefs, {&prefs.mode},
                     [card, section, &prefs] { card->setVisible(section.standsIn(prefs.mode)); });
    }
    cards->addWidget(new ShortcutKeyRow(prefs));
    column.addWidget(cards_);
    const bool more = prefs.store().boolean(QString::fromLatin1(kMoreKey)).value_or(false);
    more_->setChecked(more);
    showMoreOptions(more);
}

void SetupPanel::showMoreOptions(bool more) {
    more_->setText(more ? QStringLiteral("Menos opciones") : QStringLiteral("Más opciones"));
    cards_->setVisible(more);
    FittingScrollArea::settle(*cards_);
}

/// What is free of the main screen, where it comes up.
QRect SetupPanel::mainPlace() const {
    const std::vector<Screen> screens = context_.screens.all();
    return screens.empty() ? QGuiApplication::primaryScreen()->availableGeometry()
                           : ScreenPlace::visibleFrame(screens.front());
}

/// What is free of the screen that has most of it, to where the user may have moved it.
QRect SetupPanel::standingPlace() const {
    const std::vector<Screen> screens = context_.screens.all();
    const QRect shown = card().translated(pos());
    const auto share = [&shown](const Screen& screen) {
        const QRect part = ScreenPlace::frame(screen) & shown;
        return part.width() * part.height();
    };
    const auto most = std::ranges::max_element(screens, {}, share);
    return most == screens.end() || share(*most) == 0 ? mainPlace() : ScreenPlace::visibleFrame(*most);
}

void SetupPanel::fit() {
    const QRect free = isVisible() ? standingPlace() : mainPlace();
    const int top = isVisible() ? pos().y() + card().top() : free.top() + kFromTop;
    scroll_->setMostHeight(std::max(kLeastHeight, free.bottom() - kFromTop - top - kHead));
    layout()->activate();
    const int wanted = sizeHint().height();
    isVisible() ? height_.moveTo(wanted) : height_.jump(wanted);
}

void SetupPanel::follow() {
    resize(width(), static_cast<int>(std::lround(height_.value())));
}

void SetupPanel::show() {
    if (!isVisible()) {
        fit();
        place();
    }
    bringToFront();
}

void SetupPanel::followScreens() {
    const auto follow = [this](QScreen* screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, &SetupPanel::keepOnScreen, Qt::QueuedConnection);
    };
    for (QScreen* screen : QGuiApplication::screens()) {
        follow(screen);
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &SetupPanel::keepOnScreen, Qt::QueuedConnection);
}

void SetupPanel::keepOnScreen() {
    if (isVisible()) {
        place();
        fit();
    }
}

void SetupPanel::place() {
    const QRect free = mainPlace();
    move(free.right() + 1 - kFromRight - card().width() - card().left(), free.top() + kFromTop - card().top());
}

void SetupPanel::hide() {
    QDialog::hide();
}

/// What it asks goes with it, or the question would stand over the class.
void SetupPanel::hideEvent(QHideEvent* event) {
    DialogWindow::hideEvent(event);
    for (QDialog* question : findChildren<QDialog*>()) {
        question->reject();
    }
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
