#include "ui/PopupMenu.h"

#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr int kMark = 16;

QString css(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

QString sheet() {
    return QStringLiteral("QMenu { background: %1; border: 1px solid %2; border-radius: 12px; padding: 6px; }"
                          "QMenu::item { color: %3; padding: 6px 28px 6px 10px; border-radius: 7px; min-height: 18px; }"
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
    connect(this, &QMenu::aboutToShow, this, &PopupMenu::markChecked);
}

/// A check before what is checked; the others of such a menu stand in the same column.
void PopupMenu::markChecked() {
    const QList<QAction*> all = actions();
    const bool marks = std::any_of(all.begin(), all.end(), [](const QAction* action) { return action->isCheckable(); });
    QPixmap blank(kMark, kMark);
    blank.fill(Qt::transparent);
    for (QAction* action : all) {
        if (marks && (action->isCheckable() || action->icon().isNull())) {
            const bool checked = action->isChecked();
            action->setIcon(
                checked ? Symbol::pixmap(QStringLiteral("checkmark"), kMark, Theme::sky, devicePixelRatioF()) : blank);
        }
    }
}

} // namespace velmo
