#pragma once

#include <QColor>
#include <QFont>
#include <QLinearGradient>
#include <QRectF>
#include <QString>

#include <array>
#include <optional>

/// The one source of colour. Colours that are made of others are computed here, never typed again elsewhere.
namespace velmo::Theme {

/// From 0xRRGGBB; `opacity` from 0 to 1.
constexpr QColor nsColor(unsigned hex, double opacity = 1) {
    return QColor(static_cast<int>(hex >> 16 & 0xff), static_cast<int>(hex >> 8 & 0xff), static_cast<int>(hex & 0xff),
                  static_cast<int>(opacity * 255 + 0.5));
}

/// The same colour at another opacity, from 0 to 1.
QColor withOpacity(QColor color, double opacity);

inline constexpr QColor navy = nsColor(0x0F2A21);
inline constexpr QColor navyDeep = nsColor(0x0A1D16);
inline constexpr QColor bg = navy;
inline constexpr QColor surface = nsColor(0x6FE3B0, 0.06);
inline constexpr QColor surface2 = nsColor(0x6FE3B0, 0.12);
inline constexpr QColor border = nsColor(0xB5E3CD, 0.16);
inline constexpr QColor muted = nsColor(0x9DC2B1);
inline constexpr QColor brand = nsColor(0x1FA971);
inline constexpr QColor brandDark = nsColor(0x13784F);
inline constexpr QColor sky = nsColor(0x7FE8B8);
inline constexpr QColor skyBright = nsColor(0x45D493);
inline constexpr QColor sand = nsColor(0xF3EFE6);
inline constexpr QColor gold = nsColor(0xE9C48E);
inline constexpr QColor mint = nsColor(0x5CC9A7);
inline constexpr QColor amber = gold;
inline constexpr QColor rec = nsColor(0xE5484D);

/// Ring colours of the camera bubble, by the stored index.
inline constexpr std::array<QColor, 10> ringColors = {sky,
                                                      brand,
                                                      gold,
                                                      nsColor(0xFFFFFF),
                                                      sand,
                                                      nsColor(0xFF453A),
                                                      nsColor(0xFF9F0A),
                                                      nsColor(0x30D158),
                                                      nsColor(0xFF375F),
                                                      nsColor(0xBF5AF2)};

/// `top` laid over `under`; both in sRGB.
QColor over(QColor top, QColor under);
/// The share `amount` of `color` in a mix with `other`, both opaque.
QColor mix(QColor color, double amount, QColor other);

// Roles.
QColor card();
QColor rowHover();
QColor cardHover();
QColor field();
QColor floating();   ///< bars and palettes, slightly transparent
QColor lit();        ///< fill of what is switched on
QColor litOutline(); ///< its outline on bars
QColor chosen();     ///< fill of a chosen tile or row
QColor chosenOutline();
QColor strongBorder();
QColor track(); ///< of a switch that is off
QColor danger();
QColor dangerText();
QColor recTint();   ///< behind an icon of loss
QColor selection(); ///< behind selected text
QColor disabledText();

/// From `brand` at the top left to `skyBright` at the bottom right of `rect`.
QLinearGradient gradient(const QRectF& rect);

/// Any index: it wraps around in both directions.
QColor ring(int index);
/// "#RRGGBB"; absent for a colour that is none.
std::optional<QString> hexString(const QColor& color);
/// Six hexadecimal digits with any number of "#" around them; absent for anything else.
std::optional<QColor> colorFromHex(const QString& text);
/// The bold font of titles, `size` in pixels at scale 1.
QFont headline(double size);

} // namespace velmo::Theme
