#pragma once

#include "ui/Type.h"

#include <QAbstractButton>
#include <QLabel>
#include <QStringList>
#include <QWidget>

namespace velmo::test {

/// Text of another size while it lives.
class LargerText final {
public:
    explicit LargerText(double factor) { Type::setScale(factor); }
    ~LargerText() { Type::setScale(1); }
    LargerText(const LargerText&) = delete;
    LargerText& operator=(const LargerText&) = delete;
};

inline constexpr double kTextScales[] = {1, 1.25, 1.5};

inline bool isWhole(const QWidget& each) {
    if (const auto* label = qobject_cast<const QLabel*>(&each)) {
        return label->wordWrap() ? label->height() >= label->heightForWidth(label->width())
                                 : label->width() >= label->sizeHint().width();
    }
    return each.width() >= each.sizeHint().width() && each.height() >= each.sizeHint().height();
}

/// The words of labels and buttons below `top` that have less room than they need, or stand beyond what holds them.
inline QStringList cutTexts(const QWidget& top) {
    QStringList cut;
    for (const QWidget* each : top.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<const QAbstractButton*>(each);
        const auto* label = qobject_cast<const QLabel*>(each);
        const QString text = button ? button->text() : label ? label->text() : QString();
        if (text.isEmpty() || !each->isVisibleTo(&top)) {
            continue;
        }
        const QRect room = each->parentWidget()->rect();
        if (!isWhole(*each) || each->x() < room.left() || each->geometry().right() > room.right()) {
            cut << text;
        }
    }
    return cut;
}

} // namespace velmo::test
