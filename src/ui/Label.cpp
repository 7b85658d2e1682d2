#include "ui/Label.h"

#include "ui/Theme.h"

namespace velmo {

QLabel* makeLabel(const QString& text, TextStyle style, const QColor& color) {
    auto* label = new QLabel(text);
    label->setFont(Type::font(style));
    QPalette colors = label->palette();
    colors.setColor(QPalette::WindowText, color);
    colors.setColor(QPalette::Link, Theme::sky);
    label->setPalette(colors);
    label->setOpenExternalLinks(true);
    return label;
}

QLabel* makeWrappedLabel(const QString& text, TextStyle style, const QColor& color) {
    QLabel* label = makeLabel(text, style, color);
    label->setWordWrap(true);
    return label;
}

} // namespace velmo
