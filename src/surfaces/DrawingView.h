#pragma once

#include "session/MainTimers.h"
#include "surfaces/DrawingModel.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace velmo {

class Clock; // its header is more than moc reads
class LaserPicture;

/// The canvas over the screen: the left button draws with the tip of now. Finished strokes lie in a picture; a running
/// one is painted over it, and only where its new piece changes anything. Main thread.
class DrawingView final : public QWidget {
    Q_OBJECT
public:
    using Kind = DrawingKind;
    using Item = DrawingItem;

    /// Borrowed; all outlive the view.
    struct Services {
        const Clock& clock;
        MainTimers& timers;
    };
    /// Fills `parent`. `tip` is asked at the start of each stroke.
    DrawingView(QWidget* parent, Services services, std::function<DrawingTip()> tip);
    ~DrawingView() override;

    void undo();
    void clear();
    /// What the release of the button does, for when it will not be told: a canvas that is put away hears of no button.
    void endStroke();

    const DrawingModel& model() const { return model_; }
    bool isFading() const { return fading_; }

signals:
    /// The finished strokes.
    void strokesChanged();
    /// Anything that is seen there, in own coordinates.
    void inkChanged(const QRegion& area);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Fading;

    Point pointOf(const QMouseEvent& event) const;
    double now() const;
    QRegion flipped(const QRegion& region) const;
    void touch(const QRegion& upward);
    void changeStrokes(const std::function<void()>& change);
    void follow(const QRegion& before);
    void keepLaser();
    void fade();

    bool fitLayer();
    void bake(const QRegion& area, const QList<Item>& strokes);
    void bakeAnew(const QRegion& area);
    void paintLayer(QPainter& painter);
    void paintCurrent(QPainter& painter, const QRegion& area);

    Services services_;
    std::function<DrawingTip()> tip_;
    DrawingModel model_;
    QImage layer_;                     // the finished strokes; null while there are none
    std::vector<Fading> fadingLasers_; // one for each laser of the model
    std::unique_ptr<LaserPicture> runningLaser_;
    QRect unlit_; // of the running laser, points, y up
    std::unique_ptr<MainTimer> laserTimer_;
    bool fading_ = false;
};

} // namespace velmo
