#include "ui/ScrollLook.h"

#include "ui/Theme.h"

namespace velmo::ScrollLook {

QString sheet() {
    const QColor thumb = Theme::withOpacity(Theme::muted, 0.35);
    return QStringLiteral("QScrollBar { background: transparent; width: 9px; }"
                          "QScrollBar::handle { background: rgba(%1,%2,%3,%4); border-radius: 2px;"
                          " margin: 2px 4px 2px 0; min-height: 24px; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
        .arg(thumb.red())
        .arg(thumb.green())
        .arg(thumb.blue())
        .arg(thumb.alpha());
}

} // namespace velmo::ScrollLook
