#pragma once

#include <QColor>
#include <QWidget>

namespace velmo {

class ColorPlane;
class HueBar;

/// A small pop-up to pick a colour from: the theme's ring colours, a field of strength and lightness, a bar of hues.
/// Goes by itself when it is closed: by a click beside it, by Escape, by Return. Main thread.
class ColorChooser final : public QWidget {
    Q_OBJECT
public:
    ColorChooser(const QColor& color, QWidget* parent);
    /// Its upper left corner in global coordinates; moved so that it is whole on the screen.
    void popUpAt(QPoint corner);

signals:
    /// Each time that the user goes to another colour.
    void picked(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeDots();
    void moved();

    ColorPlane* plane_;
    HueBar* hue_;
};

} // namespace velmo
