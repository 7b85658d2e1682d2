#include "ui/Type.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmo::Type {

namespace {

struct Look {
    TextStyle style;
    int size;
    int line;
    QFont::Weight weight;
    double spacing = 0;
};

constexpr std::array kLooks = {
    Look{TextStyle::display, 26, 32, QFont::Bold},
    Look{TextStyle::title, 20, 26, QFont::Bold},
    Look{TextStyle::panelTitle, 16, 20, QFont::Bold},
    Look{TextStyle::heading, 15, 20, QFont::DemiBold},
    Look{TextStyle::cardTitle, 14, 19, QFont::DemiBold},
    Look{TextStyle::body, 13, 18, QFont::Normal},
    Look{TextStyle::label, 13, 18, QFont::Medium},
    Look{TextStyle::strong, 13, 18, QFont::DemiBold},
    Look{TextStyle::caption, 12, 16, QFont::Normal},
    Look{TextStyle::chip, 12, 16, QFont::Medium},
    Look{TextStyle::overline, 11, 14, QFont::DemiBold, 0.66},
    Look{TextStyle::micro, 10, 12, QFont::Medium},
    Look{TextStyle::zoomHead, 9, 11, QFont::Bold, 0.8},
    Look{TextStyle::clock, 16, 20, QFont::DemiBold},
    Look{TextStyle::countdown, 108, 108, QFont::Bold},
};

const Look& look(TextStyle style) {
    return *std::find_if(kLooks.begin(), kLooks.end(), [style](const Look& one) { return one.style == style; });
}

constexpr double kMostScale = 2;
constexpr double kRoomyScale = 1.25;
constexpr double kUsualDots = 96;
constexpr double kUsualPoints = 11; // desktops choose from 9 to 11 points by themselves

double currentScale = 1;

int rounded(double length) {
    return static_cast<int>(std::lround(length));
}

/// The countdown's number fills a disc.
double scaleOf(TextStyle style) {
    return style == TextStyle::countdown ? 1 : currentScale;
}

double digitAdvance(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    }
    return widest;
}

} // namespace

QString family() {
    static const QString chosen = [] {
        const QStringList installed = QFontDatabase::families();
        for (const char* wanted : {"Inter", "Cantarell", "Noto Sans"}) {
            if (installed.contains(QLatin1String(wanted))) {
                return QString::fromLatin1(wanted);
            }
        }
        return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
    }();
    return chosen;
}

QFont font(TextStyle style) {
    const Look& wanted = look(style);
    QFont font(family());
    font.setPixelSize(rounded(wanted.size * scaleOf(style)));
    font.setWeight(wanted.weight);
    font.setLetterSpacing(QFont::AbsoluteSpacing, wanted.spacing);
    return font;
}

int lineHeight(TextStyle style) {
    return rounded(look(style).line * scaleOf(style));
}

double scale() {
    return currentScale;
}

void setScale(double factor) {
    currentScale = std::clamp(factor, 1.0, kMostScale);
}

double scaleFor(double points, double dotsPerInch) {
    return std::clamp(std::max(points / kUsualPoints, 1.0) * dotsPerInch / kUsualDots, 1.0, kMostScale);
}

int scaled(int length) {
    return rounded(length * currentScale);
}

int heightFor(int height) {
    const int grown = lineHeight(TextStyle::body) - look(TextStyle::body).line;
    return currentScale > kRoomyScale ? height + grown : height;
}

double tabularWidth(const QFont& font, const QString& text) {
    const QFontMetricsF metrics(font);
    const double digit = digitAdvance(metrics);
    double width = 0;
    for (const QChar c : text) {
        width += c.isDigit() ? digit : metrics.horizontalAdvance(c);
    }
    return width;
}

void drawTabular(QPainter& painter, QPointF baseline, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    const double digit = digitAdvance(metrics);
    for (const QChar c : text) {
        const double own = metrics.horizontalAdvance(c);
        const double advance = c.isDigit() ? digit : own;
        painter.drawText(baseline + QPointF((advance - own) / 2, 0), QString(c));
        baseline.rx() += advance;
    }
}

} // namespace velmo::Type
