#pragma once

#include "session/Collaborators.h"
#include "surfaces/BubbleControlsView.h"
#include "surfaces/BubbleServices.h"
#include "surfaces/PreviewLender.h"
#include "surfaces/internal/CameraBubble.h"

#include <QMenu>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// The teacher's camera on the desktop: shown, dragged, dressed by the settings, with its menu and the controls that
/// come up under the mouse; lent to the presenter, covered by it, or alone as the whole recording. Main thread.
class BubbleController final : public QObject, public BubblePort, public PreviewLender {
    Q_OBJECT
public:
    /// What the first bubble needs besides.
    struct Ties {
        std::function<bool()> hasVideo;
        /// Applies the settings to the second bubble. May be empty.
        std::function<void()> applySecond;
    };
    BubbleController(BubbleServices services, Ties ties);
    ~BubbleController() override;

    void show() override;
    void hide() override;
    /// A bubble that the user has put away comes back only when the camera has a picture.
    void toggleUserVisibility() override;
    bool userHidden() const override { return userHidden_; }
    bool isVisible() const { return bubble_.isVisible(); }
    /// Brings shape, ring, name, mirror and size up to the settings.
    void applyPrefs();
    void bringToFront();
    void keep(const Screen& screen) override;

    void enterCameraOnly(const Screen& screen) override;
    void exitCameraOnly() override;
    void prepareControlsForCapture() override;
    void parkControls() override;

    std::optional<WindowId> windowID() const override { return bubble_.windowID(); }
    std::optional<BubbleInfo> captureInfo() const override;
    std::optional<BubbleInfo> captureInfoIgnoringCover() const override;
    CameraPreview& lendPreview() override { return bubble_.view().lendPreview(); }
    void takeBackPreview() override { bubble_.view().takeBackPreview(); }
    void setCoveredByPresenter(bool covered) override;
    void setCoveredByColumn(bool covered) override;

    /// Loudness of the microphone, 0 to 1.
    void setLevel(double level) { bubble_.view().setLevel(level); }
    /// The displays have changed.
    void reconnect();

    std::unique_ptr<QMenu> makeMenu();
    BubbleView& view() { return bubble_.view(); }
    /// Null before they were first needed.
    BubbleControlsView* controls() { return controls_.get(); }
    const BubbleControlsModel& controlsModel() const { return controlsModel_; }

signals:
    void userHiddenChanged(bool hidden);

private:
    enum class When { now, soon };

    bool isCovered() const { return underPresenter_ || underColumn_; }
    void cover();
    void setUserHidden(bool hidden);
    void putAway();
    void chooseSize(BubbleSize size);
    void updateControls();
    void makeControls();
    void showControls();
    void hideControls(When when);
    void positionControls();

    BubbleServices services_;
    Ties ties_;
    CameraBubble bubble_;
    BubbleControlsModel controlsModel_;
    std::unique_ptr<BubbleControlsView> controls_;
    bool attached_ = false; ///< the controls ride on the bubble
    bool overBubble_ = false;
    bool overControls_ = false;
    std::shared_ptr<int> hideWork_;  ///< the delayed hide that has not been taken back
    std::optional<Rect> savedFrame_; ///< set exactly while camera-only
    bool underPresenter_ = false;    // each of the two covers it by itself: quick keys let them overlap
    bool underColumn_ = false;
    bool userHidden_ = false;
};

} // namespace velmo
