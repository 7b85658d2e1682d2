#pragma once

#include <QWidget>

class QHBoxLayout;

namespace velmo {

class Button;

/// The lit capsule around the controls of a zoom that is on; at its left the level.
class ZoomGroup final : public QWidget {
    Q_OBJECT
public:
    explicit ZoomGroup(QWidget* parent = nullptr);

    /// To the right of what is there.
    void add(Button* button);
    /// The zoom factor.
    void setLevel(double level);
    static QString textFor(double level);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QHBoxLayout* row_;
    QString level_;
};

} // namespace velmo
