#include "app/AboutPanel.h"

#include "app/Credit.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QCoreApplication>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QVBoxLayout>

namespace velmo {
namespace {

constexpr int kWidth = 420;
constexpr int kLogo = 84;
constexpr int kCreditsSize = 11;
constexpr double kCornerRadius = 14;

QLabel* centered(const QString& text, const QFont& font, const QColor& color) {
    auto* made = new QLabel(text);
    made->setFont(font);
    made->setAlignment(Qt::AlignCenter);
    QPalette colors = made->palette();
    colors.setColor(QPalette::WindowText, color);
    colors.setColor(QPalette::Link, Theme::sky);
    made->setPalette(colors);
    return made;
}

} // namespace

AboutPanel::AboutPanel(QWidget* parent) : DialogWindow(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Acerca de Velmo Studio"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 38, 24, 34);
    column->setSpacing(2);
    auto* logo = new QLabel;
    logo->setPixmap(QIcon(QStringLiteral(":/velmo/icon.svg")).pixmap(QSize(kLogo, kLogo), devicePixelRatioF()));
    logo->setAlignment(Qt::AlignCenter);
    column->addWidget(logo);
    column->addSpacing(12);
    QFont name = Type::font(TextStyle::title);
    name.setWeight(QFont::Normal);
    column->addWidget(centered(QStringLiteral("<b>Velmo</b> Studio"), name, Theme::sand));
    column->addWidget(centered(QCoreApplication::applicationVersion(), Type::font(TextStyle::caption), Theme::muted));
    column->addSpacing(12);
    QFont small = Type::font(TextStyle::caption);
    small.setPixelSize(Type::scaled(kCreditsSize));
    QLabel* credit = centered(credits(), small, Theme::muted);
    credit->setTextFormat(Qt::RichText);
    credit->setOpenExternalLinks(true);
    column->addWidget(credit);
    const QMargins around = contentsMargins();
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
}

QString AboutPanel::credits() {
    const QString site = QString::fromUtf8(Credit::site);
    return QString::fromUtf8(Credit::text).toHtmlEscaped() + QStringLiteral("<br><a href=\"%1\">%1</a>").arg(site);
}

/// A soft light from above behind the logo.
void AboutPanel::paintEvent(QPaintEvent* event) {
    DialogWindow::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = card();
    QPainterPath path;
    path.addRoundedRect(box.adjusted(1, 1, -1, -1), kCornerRadius - 1, kCornerRadius - 1);
    QRadialGradient light(QPointF(box.center().x(), box.top()), box.width() * 0.45);
    light.setColorAt(0, Theme::withOpacity(Theme::brand, 0.30));
    light.setColorAt(1, Theme::withOpacity(Theme::brand, 0));
    painter.fillPath(path, light);
}

} // namespace velmo
