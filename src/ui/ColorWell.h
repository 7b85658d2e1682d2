#pragma once

#include <QAbstractButton>
#include <QColor>

namespace velmo {

/// A small field of colour; a click lets the user pick another one. Main thread.
class ColorWell final : public QAbstractButton {
    Q_OBJECT
public:
    /// `name` is what assistive technology calls it.
    explicit ColorWell(const QString& name, QWidget* parent = nullptr);

    void setColor(const QColor& color);
    QColor color() const { return color_; }
    QSize sizeHint() const override;

signals:
    /// By the user, also while he is still looking for it.
    void picked(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void open();

    QColor color_;
};

} // namespace velmo
