#pragma once

#include "compositor/NameTagImage.h"
#include "session/MainTimers.h"
#include "surfaces/BubbleLook.h"
#include "surfaces/CameraPreview.h"
#include "surfaces/LevelTransition.h"
#include "surfaces/internal/BubbleCanvas.h"
#include "ui/FloatingPanel.h"

#include <QMenu>

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

class Clock;

/// A camera in its shape with ring, halo, shadow and name, as a panel of its own. Main thread.
///
/// It paints at most once for each picture of the camera, and that picture takes the ring along. Only while the ring
/// moves and no pictures come does a timer step it, 30 times a second, and then what lies near the edge is repainted
/// and nothing else. Nothing runs while the panel is hidden, concealed or has lent its picture. Its native window is
/// made with it and stays the same.
class BubbleView final : public FloatingPanel {
    Q_OBJECT
public:
    /// Points between the panel's edge and the bubble.
    static constexpr double pad = BubbleOutline::kPad;

    /// `NameTag::image`, or what a test puts in its place.
    using NameTagMaker =
        std::function<std::optional<NameTag::Image>(const QString&, const QString&, double, double, double)>;
    /// All borrowed; all outlive the view.
    struct Services {
        CameraFeed& feed;
        const Clock& clock;
        MainTimers& timers;
        NameTagMaker nameTag;
    };
    explicit BubbleView(Services services);
    ~BubbleView() override;

    const BubbleLook& look() const { return look_; }
    void setLook(const BubbleLook& look);
    /// The picture alone, a plain rectangle as large as the panel.
    bool isCameraOnly() const { return cameraOnly_; }
    void setCameraOnly(bool on);
    /// Loudness, 0 to 1: the ring swells with it.
    void setLevel(double level);
    void setMirrored(bool mirrored) { preview_.setMirrored(mirrored); }
    /// Unseen, and nothing of it takes the mouse. It is painted anew when it comes back.
    void setConcealed(bool concealed);
    /// Paints everything anew, as after a change of the displays.
    void reconnect();

    /// Until `takeBackPreview` the picture is the borrower's.
    CameraPreview& lendPreview();
    void takeBackPreview();
    bool isLent() const { return lent_; }

    /// The name tag in own coordinates, y down; absent when there is none to see.
    std::optional<QRectF> nameFrame() const { return nameFrame_; }
    bool isAnimating() const { return animating_; }

    std::function<void()> onDoubleClick;
    std::function<void(bool inside)> onHover;
    std::function<std::unique_ptr<QMenu>()> menuProvider;
    std::function<void()> onGrab;    ///< a drag may begin; called before it does
    std::function<void()> onDrag;    ///< the user has moved the panel
    std::function<void()> onRelease; ///< a drag may have ended
    std::function<void()> onMove;    ///< the panel stands elsewhere or is larger, whoever did that

protected:
    QRegion mouseRegion() const override;
    QPainterPath outline() const override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool isLive() const { return isVisible() && !concealed_ && !lent_; }
    double now() const;
    QSize pixelSize() const;
    BubbleOutline bubbleOutline() const;
    void layOut();
    void placeName();
    void tellHover(bool inside);
    void tellMove();
    void showPicture();
    void repaintAll();
    void repaintRing();
    void paintStale();
    void step();
    /// Runs the timer exactly while something moves by itself.
    void followMotion();

    Services services_;
    CameraPreview preview_;
    BubbleCanvas canvas_;
    BubbleLook look_;
    LevelTransition level_;
    std::optional<BubbleCanvas::Part> stale_; // what of the canvas is to be painted anew
    double lastPicture_ = -1;                 // when the camera last gave one
    bool cameraOnly_ = false;
    bool lent_ = false;
    bool concealed_ = false;
    bool animating_ = false;
    QString nameKey_; // what `nameImage_` was made of
    QImage nameImage_;
    QSizeF nameSize_;
    std::optional<QRectF> nameFrame_;
    std::unique_ptr<MainTimer> steps_;
};

} // namespace velmo
