#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>

namespace velmo {

/// On or off, 36 by 21 points. Its `text` is its accessible name; what names it on screen stands beside it.
class Switch final : public QAbstractButton {
    Q_OBJECT
public:
    explicit Switch(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    Fade knob_;
    bool showsFocus_ = false;
};

} // namespace velmo
