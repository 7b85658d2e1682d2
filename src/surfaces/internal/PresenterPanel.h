#pragma once

#include "surfaces/PresenterFlight.h"
#include "surfaces/PresenterTag.h"
#include "ui/FloatingPanel.h"

#include <QImage>
#include <QPointer>

namespace velmo {

class CameraPreview;

/// The window in which the presenter is seen: paints one `PresenterFrame`. As large as the screen, lets the mouse
/// through. Main thread.
///
/// Each change repaints what it changes: a camera picture the stage, a new backdrop all but the stage's middle, a step
/// of a flight the stage before and after, and all where the backdrop comes up. While the stage moves the camera's
/// picture is kept in the camera's own size and stretched by the painter; at rest it is made for the stage.
class PresenterPanel final : public FloatingPanel {
    Q_OBJECT
public:
    enum class Stage { flying, standing };

    PresenterPanel();

    /// Nothing to be seen from now on: no picture, no backdrop, no tag.
    void clear();
    /// The ends of the flight that is to be shown; tells how large a picture is worth keeping, and the shadow's radius.
    void expect(const PresenterFrame& stage);
    void setFrame(const PresenterFrame& frame, Stage stage);
    const PresenterFrame& frame() const { return frame_; }
    /// Borrowed until the next call; null: no camera.
    void setPreview(CameraPreview* preview);
    /// Of the window's size in pixels; null for the plain ground.
    void setBackdrop(QImage backdrop);
    /// A tag is taken over when there is none; null takes it away.
    void setTag(const PresenterTag* tag, double opacity);

signals:
    /// Once after each `show`: the window's contents are on the screen.
    void appeared();

protected:
    QPainterPath outline() const override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QRectF down(const Rect& rect) const;
    QRegion stageRegion(const PresenterFrame& frame) const;
    QRegion hiddenByStage() const;
    const QImage& cameraPicture();
    void paintGround(QPainter& painter);
    void paintStage(QPainter& painter);
    void paintTag(QPainter& painter);

    PresenterFrame frame_;
    PresenterFrame expected_;
    Stage stage_ = Stage::standing;
    QPointer<CameraPreview> preview_;
    QImage backdrop_;
    QImage tagImage_;
    QRectF tagPlace_; // empty: no tag
    double tagOpacity_ = 0;
    bool awaited_ = false; // shown and not yet painted
};

} // namespace velmo
