#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace velmo {

/// Draws the mark of keyboard focus around a widget that has no room for it inside: outside its edge, over what lies
/// beside it. It shows while the widget has the focus by Tab or by an arrow key. Main thread; lives with the widget.
class FocusRing final : public QObject {
    Q_OBJECT
public:
    /// `radius` of the widget's shape; `inset` from its edge to the shape.
    FocusRing(QWidget& of, double radius, QMargins inset = {});
    ~FocusRing() override;

    bool isShown() const { return !mark_.isNull(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show();
    void hide();
    void place();

    QWidget& of_;
    const double radius_;
    const QMargins inset_;
    bool byKeyboard_ = false;
    QPointer<QWidget> mark_;
    std::vector<QPointer<QWidget>> between_; // whose moves move the widget within the mark's parent
};

} // namespace velmo
