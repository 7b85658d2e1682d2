#include "ui/PopupMenu.h"

#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QPainter>

namespace velmo {

namespace {

constexpr int kMarkSide = 14;
constexpr int kMarkRoom = 28; // right of the words

QString css(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

QString sheet() {
    return QStringLiteral("QMenu { background: %1; border: 1px solid %2; border-radius: 12px; padding: 6px; }"
                          "QMenu::item { color: %3; padding: 6px 34px 6px 10px; border-radius: 7px; min-height: 18px; }"
                          "QMenu::item:selected { background: %4; }"
                          "QMenu::item:checked { color: %5; }"
                          "QMenu::item:disabled { color: %6; }"
                          "QMenu::indicator { width: 0; height: 0; }"
                          "QMenu::icon { padding-left: 8px; }"
                          "QMenu::separator { height: 1px; background: %7; margin: 6px 8px; }")
        .arg(css(Theme::card()), css(Theme::strongBorder()), css(Theme::sand), css(Theme::surface2), css(Theme::sky),
             css(Theme::disabledText()), css(Theme::border));
}

} // namespace

PopupMenu::PopupMenu(QWidget* parent) : QMenu(parent) {
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setFont(Type::font(TextStyle::body));
    setStyleSheet(sheet());
}

void PopupMenu::paintEvent(QPaintEvent* event) {
    QMenu::paintEvent(event);
    QPainter painter(this);
    for (QAction* action : actions()) {
        if (action->isVisible() && action->isChecked() && !action->text().contains(QLatin1Char('\t'))) {
            QRect room = actionGeometry(action);
            room.setLeft(room.right() - kMarkRoom);
            Symbol::paint(painter, room, QStringLiteral("checkmark"), kMarkSide, Theme::sky);
        }
    }
}

} // namespace velmo
