#pragma once

#include <QEvent>
#include <QObject>

namespace velmo::test {

/// How often a widget is painted.
class PaintCount final : public QObject {
public:
    explicit PaintCount(QObject& widget) { widget.installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace velmo::test
