#include "ui/Look.h"

#include "ui/Theme.h"
#include "ui/Type.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QToolTip>

namespace velmo::Look {

namespace {

QPalette palette() {
    QPalette colors;
    colors.setColor(QPalette::Window, Theme::bg);
    colors.setColor(QPalette::Base, Theme::field());
    colors.setColor(QPalette::AlternateBase, Theme::card());
    colors.setColor(QPalette::Button, Theme::card());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText}) {
        colors.setColor(role, Theme::sand);
        colors.setColor(QPalette::Disabled, role, Theme::disabledText());
    }
    colors.setColor(QPalette::PlaceholderText, Theme::muted);
    colors.setColor(QPalette::Highlight, Theme::over(Theme::selection(), Theme::navy));
    colors.setColor(QPalette::HighlightedText, Theme::sand);
    colors.setColor(QPalette::Link, Theme::sky);
    colors.setColor(QPalette::ToolTipBase, Theme::sand);
    colors.setColor(QPalette::ToolTipText, Theme::navy);
    return colors;
}

/// The font that the desktop gives to every program, before this one chooses its own.
double desktopScale() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? Type::scaleFor(QApplication::font().pointSizeF(), screen->logicalDotsPerInchY()) : 1;
}

} // namespace

void apply(QApplication& application) {
    Type::setScale(desktopScale());
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application.setPalette(palette());
    application.setFont(Type::font(TextStyle::body));
    QToolTip::setFont(Type::font(TextStyle::chip));
    QToolTip::setPalette(palette());
    application.setStyleSheet(QStringLiteral("QToolTip { background: %1; color: %2; border: none; border-radius: 8px;"
                                             " padding: 6px 10px; }")
                                  .arg(Theme::sand.name(), Theme::navy.name()));
}

} // namespace velmo::Look
