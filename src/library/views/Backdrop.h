#pragma once

#include <QPixmap>
#include <QWidget>

namespace velmo {

/// The blackboard behind the library: two soft lights and a fine grid at the top, fading out downwards.
class Backdrop final : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap top_; ///< for the width and ratio that it was made for
};

} // namespace velmo
