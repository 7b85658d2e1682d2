#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>
#include <QColor>

namespace velmo {

/// A dot to choose on the palette: a colour, which gets a ring when it is chosen, or a width, which lights up as a tool
/// does. Main thread.
class PaletteDot final : public QAbstractButton {
    Q_OBJECT
public:
    enum class Choice { color, width };

    /// `diameter` in points.
    PaletteDot(Choice choice, const QString& name, const QColor& color, double diameter);

    QSize sizeHint() const override { return {28, 34}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void paintColor(QPainter& painter, const QRectF& dot) const;
    void paintWidth(QPainter& painter, const QRectF& dot) const;

    const Choice choice_;
    const QColor color_;
    const double diameter_;
    Fade hover_;
};

} // namespace velmo
