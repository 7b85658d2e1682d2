#pragma once

#include "settings/BubbleSize.h"

#include <QColor>
#include <QObject>

#include <functional>

namespace velmo {

/// What the hover controls show, and whom they tell. Main thread.
class BubbleControlsModel final : public QObject {
    Q_OBJECT
public:
    QColor accent() const { return accent_; }
    void setAccent(const QColor& accent) { set(accent_, accent); }
    /// Diameter of a button in points.
    double button() const { return button_; }
    void setButton(double button) { set(button_, button); }
    BubbleSize selected() const { return selected_; }
    void setSelected(BubbleSize size) { set(selected_, size); }

    std::function<void(BubbleSize)> onSize;
    std::function<void()> onClose;
    std::function<void(bool inside)> onHover;

signals:
    void changed();

private:
    template <typename T>
    void set(T& field, const T& value) {
        if (!(field == value)) {
            field = value;
            emit changed();
        }
    }

    QColor accent_ = Qt::white;
    double button_ = 24;
    BubbleSize selected_ = BubbleSize::m;
};

} // namespace velmo
