#pragma once

#include "ui/Shadow.h"

#include <QColor>
#include <QDialog>

namespace velmo {

/// A window of the program's own look without a frame of the system: a rounded card with its shadow, moved by its
/// background, kept above other windows, closed by Escape. Its layout is put inside the card: the window's
/// contents margins are the room for the shadow, which lets the mouse through. Main thread.
class DialogWindow : public QDialog {
    Q_OBJECT
public:
    struct Floor {
        QColor color;
        double radius;
        Elevation elevation;
    };

    explicit DialogWindow(QWidget* parent = nullptr);
    DialogWindow(Floor floor, QWidget* parent = nullptr);

    /// Comes up in the middle of the screen where the pointer is, in front of everything, with the keyboard.
    void present();
    /// In front of everything, with the keyboard, where it is.
    void bringToFront();
    /// The card, in the window's own coordinates.
    QRect card() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void applyShape();

    const Floor floor_;
    bool composited_ = true;
};

} // namespace velmo
