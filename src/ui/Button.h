#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>
#include <QString>

namespace velmo {

enum class ButtonStyle {
    primary,
    primaryLarge,
    primarySmall, ///< in a row of small buttons; without glow and room
    ghost,
    quiet,
    danger,
    finish, ///< ends a recording
    bar,    ///< a square with an icon, on floating bars
    icon,   ///< a small square with an icon, at the head of a panel
};

/// A button of the program's own look. A symbol name goes before the text, or stands alone without one.
/// Checkable buttons are lit while checked. `primary` and `primaryLarge` reserve room below for their glow.
class Button final : public QAbstractButton {
    Q_OBJECT
public:
    explicit Button(ButtonStyle style, const QString& text = {}, QWidget* parent = nullptr);

    /// By the names of Symbol; empty for none.
    void setSymbol(const QString& name);
    /// In place of the style's own size, in points.
    void setSymbolSize(int size);
    /// Quieter icon, for what is used rarely; a small square has no fill at rest.
    void setSubdued(bool subdued);
    /// A square with an icon gives up its room at the sides, where a bar has too little.
    void setNarrow(bool narrow);
    /// The first choice among ghost buttons: lit outline and text.
    void setEmphasized(bool emphasized);

    /// A small mark in the corner: a click opens a menu.
    void setHasMenu(bool hasMenu);

    /// Takes the focus and shows it, as a press of Tab does.
    void focusVisibly();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// Where the button is seen, without the room for glow and focus ring.
    QRect shape() const;
    /// Room around the shape, the same on all sides.
    static constexpr int kRoom = 4;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    /// Return and Enter press it as the space bar does.
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    void paintFloor(class QPainter& painter, const QRectF& shape) const;
    void paintPrimary(class QPainter& painter, const QRectF& shape) const;
    void paintContent(class QPainter& painter, const QRectF& shape) const;
    QColor inkColor() const;
    QMargins room() const;
    bool isPrimary() const {
        return style_ == ButtonStyle::primary || style_ == ButtonStyle::primaryLarge || isSmall();
    }
    bool isSmall() const { return style_ == ButtonStyle::primarySmall; }

    const ButtonStyle style_;
    QString symbol_;
    int symbolSize_;
    bool subdued_ = false;
    bool narrow_ = false;
    bool emphasized_ = false;
    bool hasMenu_ = false;
    bool showsFocus_ = false;
    Fade hover_;
};

} // namespace velmo
