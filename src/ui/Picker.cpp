#include "ui/Picker.h"

#include "ui/FocusRing.h"
#include "ui/Painting.h"
#include "ui/PopupMenu.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kHeight = 34;
constexpr int kRadius = 9;
constexpr int kPadding = 12;
constexpr int kIcon = 16;
constexpr int kGap = 10;

} // namespace

Picker::Picker(QString symbol, const QString& name, QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)) {
    setAccessibleName(name);
    setFont(Type::font(TextStyle::body));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    new FocusRing(*this, kRadius);
    connect(this, &QAbstractButton::clicked, this, &Picker::openMenu);
}

void Picker::setChoices(std::vector<Choice> choices, const QString& current) {
    const auto found = std::ranges::find(choices, current, &Choice::id);
    const std::size_t index = found == choices.end() ? 0 : static_cast<std::size_t>(found - choices.begin());
    if (choices == choices_ && index == current_) {
        return;
    }
    choices_ = std::move(choices);
    current_ = index;
    setText(choices_.empty() ? QString() : choices_[current_].title);
    setToolTip(text());
    setAccessibleDescription(text()); // the name says what is chosen, this which
    update();
}

QString Picker::current() const {
    return choices_.empty() ? QString() : choices_[current_].id;
}

QSize Picker::sizeHint() const {
    return {180, Type::heightFor(kHeight)};
}

void Picker::step(std::size_t index) {
    if (index < choices_.size() && index != current_) {
        choose(choices_[index].id);
    }
}

void Picker::choose(QString id) {
    if (std::ranges::find(choices_, id, &Choice::id) != choices_.end()) {
        setChoices(std::exchange(choices_, {}), id);
        emit picked(id);
    }
}

void Picker::openMenu() {
    emit opening();
    auto* menu = new PopupMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setMinimumWidth(width());
    for (std::size_t i = 0; i < choices_.size(); ++i) {
        QAction* action = menu->addAction(choices_[i].title);
        action->setCheckable(true);
        action->setChecked(i == current_);
        connect(action, &QAction::triggered, this, [this, id = choices_[i].id] { choose(id); });
    }
    menu->popup(mapToGlobal(QPoint(0, height() + 4)));
}

void Picker::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Down:
        step(current_ + 1);
        break;
    case Qt::Key_Up:
        step(current_ - 1); // from the first it wraps to an index that is none
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        openMenu();
        break;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void Picker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = rect();
    const bool hovered = isEnabled() && underMouse();
    Painting::roundedBox(painter, box, kRadius, Theme::surface, hovered ? Theme::strongBorder() : Theme::border);
    double x = kPadding;
    if (!symbol_.isEmpty()) {
        Symbol::paint(painter, QRectF(x, 0, kIcon, height()), symbol_, kIcon,
                      isEnabled() ? Theme::muted : Theme::disabledText());
        x += kIcon + kGap;
    }
    const double right = width() - kPadding - kIcon;
    Symbol::paint(painter, QRectF(right, 0, kIcon, height()), QStringLiteral("chevron.down"), kIcon, Theme::muted);
    painter.setFont(font());
    painter.setPen(isEnabled() ? Theme::sand : Theme::disabledText());
    const QFontMetricsF metrics(font());
    painter.drawText(QPointF(x, std::round(box.center().y() + metrics.capHeight() / 2)),
                     metrics.elidedText(text(), Qt::ElideRight, right - x - kGap));
}

} // namespace velmo
