#include "ui/Theme.h"

#include "ui/Type.h"

#include <algorithm>
#include <cmath>

namespace velmo::Theme {

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor over(QColor top, QColor under) {
    const double a = top.alphaF();
    const double b = under.alphaF() * (1 - a);
    const double alpha = a + b;
    if (alpha <= 0) {
        return Qt::transparent;
    }
    const auto part = [&](double x, double y) { return static_cast<float>((x * a + y * b) / alpha); };
    return QColor::fromRgbF(part(top.redF(), under.redF()), part(top.greenF(), under.greenF()),
                            part(top.blueF(), under.blueF()), static_cast<float>(alpha));
}

QColor mix(QColor color, double amount, QColor other) {
    return over(withOpacity(color, amount), other);
}

QColor card() {
    return over(surface, navy);
}
QColor rowHover() {
    return over(surface2, navy);
}
QColor cardHover() {
    return over(surface2, card());
}
QColor field() {
    return mix(navyDeep, 0.55, navy);
}
QColor floating() {
    return withOpacity(mix(navyDeep, 0.5, navy), 0.97);
}
QColor lit() {
    return withOpacity(skyBright, 0.20);
}
QColor litOutline() {
    return withOpacity(skyBright, 0.55);
}
QColor chosen() {
    return withOpacity(skyBright, 0.16);
}
QColor chosenOutline() {
    return withOpacity(skyBright, 0.80);
}
QColor strongBorder() {
    return withOpacity(border, 0.28);
}
QColor track() {
    return withOpacity(border, 0.18);
}
QColor danger() {
    return mix(rec, 0.78, navyDeep);
}
QColor dangerText() {
    return mix(rec, 0.55, sand);
}
QColor recTint() {
    return withOpacity(rec, 0.18);
}
QColor selection() {
    return withOpacity(brand, 0.55);
}
QColor disabledText() {
    return mix(muted, 0.5, navy);
}

QLinearGradient gradient(const QRectF& rect) {
    QLinearGradient result(rect.topLeft(), rect.bottomRight());
    result.setColorAt(0, brand);
    result.setColorAt(1, skyBright);
    return result;
}

QColor ring(int index) {
    const int count = static_cast<int>(ringColors.size());
    return ringColors[static_cast<std::size_t>((index % count + count) % count)];
}

std::optional<QString> hexString(const QColor& color) {
    const QColor rgb = color.toRgb();
    return rgb.isValid() ? std::optional(rgb.name(QColor::HexRgb).toUpper()) : std::nullopt;
}

std::optional<QColor> colorFromHex(const QString& text) {
    const auto isMark = [](QChar c) { return c == QLatin1Char('#'); };
    QStringView digits(text);
    while (!digits.isEmpty() && isMark(digits.front())) {
        digits = digits.mid(1);
    }
    while (!digits.isEmpty() && isMark(digits.back())) {
        digits.chop(1);
    }
    const auto isDigit = [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    };
    if (digits.size() != 6 || !std::all_of(digits.begin(), digits.end(), isDigit)) {
        return std::nullopt;
    }
    return nsColor(digits.toUInt(nullptr, 16));
}

QFont headline(double size) {
    QFont font = Type::font(TextStyle::title);
    font.setPixelSize(static_cast<int>(std::lround(size * Type::scale())));
    font.setWeight(QFont::Bold);
    return font;
}

} // namespace velmo::Theme
