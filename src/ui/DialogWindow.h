#pragma once

#include "ui/Shadow.h"

#include <QDialog>

namespace velmo {

/// A window of the program's own look without a frame of the system: a rounded card with its shadow, moved by its
/// background, kept above other windows, closed by Escape. Its layout is put inside the card with `setContentsMargins`
/// already set to the shadow's room. Main thread.
class DialogWindow : public QDialog {
    Q_OBJECT
public:
    explicit DialogWindow(QWidget* parent = nullptr);

    /// Comes up in the middle of the screen where the pointer is, in front of everything, with the keyboard.
    void present();
    /// The card, in the window's own coordinates.
    QRect card() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    static constexpr double kRadius = 14;
};

} // namespace velmo
