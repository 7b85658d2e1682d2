#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "classkit/Chapter.h"
#include "platform/InputMonitors.h"
#include "session/CaptureTarget.h"
#include "session/DiskGuard.h"
#include "session/Scene.h"
#include "session/SessionServices.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmo {

/// The one recording session, from key press to saved file. Main thread only.
///
/// Nothing else writes `state`. Operations whose guard fails do nothing: no result, no error. Asynchronous work
/// suspends on the main thread; other events run meanwhile, and `preparing` and `saving` refuse what would disturb
/// it. While a question or a message of the session stands, `start`, `cancel` and `restart` are refused too.
/// What goes wrong ends in a message to the user and a line of the log.
///
/// Recorded seconds are the sum of the segments in `recording`, pauses and preparations left out.
class RecorderController final : public QObject {
    Q_OBJECT
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(double elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(std::optional<QString> flash READ flash NOTIFY flashChanged)
    Q_PROPERTY(bool zoomOn READ zoomOn NOTIFY zoomOnChanged)
    Q_PROPERTY(bool regionOn READ regionOn NOTIFY regionOnChanged)
    Q_PROPERTY(double zoomLevelNow READ zoomLevelNow NOTIFY zoomLevelNowChanged)
    Q_PROPERTY(bool zoomFollowing READ zoomFollowing NOTIFY zoomFollowingChanged)
    Q_PROPERTY(bool spotlightOn READ spotlightOn NOTIFY spotlightOnChanged)
    Q_PROPERTY(bool presenterOn READ presenterOn NOTIFY presenterOnChanged)
    Q_PROPERTY(Scene scene READ scene NOTIFY sceneChanged)

public:
    enum class State {
        idle,      ///< no session
        setup,     ///< the setup panel is open, previews are live
        preparing, ///< permissions, windows, countdown, start of capture
        recording,
        paused,
        saving ///< the file is being finished or thrown away
    };
    Q_ENUM(State)
    using Scene = velmo::Scene;

    explicit RecorderController(SessionServices services, SessionSurfaces surfaces = {});
    ~RecorderController() override;

    /// The program's one session, registered by the composition root before anything asks for it.
    static RecorderController& shared();
    /// Borrowed; null takes the registration back.
    static void setShared(RecorderController* controller);

    /// For surfaces that need the controller before they can be made. Only in `idle`.
    void attach(SessionSurfaces surfaces);
    /// For surfaces that go before the controller: it forgets them and tells them nothing more. In any state.
    void detach() { surfaces_ = {}; }

    State state() const { return state_; }
    /// Recorded seconds shown to the user, brought up to date four times a second.
    double elapsed() const { return elapsed_; }
    /// Short message over the control bar.
    const std::optional<QString>& flash() const { return flash_; }
    bool zoomOn() const { return zoomOn_; }
    bool regionOn() const { return regionOn_; }
    double zoomLevelNow() const { return zoomLevelNow_; }
    bool zoomFollowing() const { return zoomFollowing_; }
    bool spotlightOn() const { return spotlightOn_; }
    bool presenterOn() const { return presenterOn_; }
    Scene scene() const { return scene_; }
    /// `recording` or `paused`.
    bool isActive() const { return state_ == State::recording || state_ == State::paused; }

    /// Of the recording that runs or ran last. Both have one entry for each mark, in the order made.
    const std::vector<double>& markers() const { return markers_; }
    const std::vector<Chapter>& chapters() const { return chapters_; }
    /// Present from `preparing` until the session is over.
    const std::optional<Screen>& recordingScreen() const { return recordingScreen_; }
    /// Sizes in points of the windows that are captured by themselves, by overlay key.
    const std::map<int, Size>& overlaySizes() const { return overlaySizes_; }

    void openSetup();
    void closeSetup();
    /// A setting that the previews show has another value.
    void previewChanged();
    /// Schedules the start: warnings, permissions, countdown, capture.
    void start();
    void toggleFromHotkey();
    void togglePause();
    void stop();
    /// Asks, then throws the recording away.
    void cancel();
    /// Asks, then throws the recording away and starts again.
    void restart();
    /// Shows `text` for 1.6 seconds.
    void flashMessage(const QString& text);

    void addMarker();
    void addChapter(const QString& title, std::optional<QString> location);

    void toggleZoom();
    void zoomIn();
    void zoomOutStep();
    void resetZoom();
    void toggleZoomFollow();
    /// Lets the user pick what to zoom to.
    void zoomToArea();
    /// Crops to the region of last time, or asks for one; off when it is on.
    void toggleRegion();
    void chooseRegion();
    /// Needs the spotlight's overlay.
    void toggleSpotlight();
    /// Goes to the presenter's scene of the settings, or back to `screen`.
    void togglePresenter();
    /// Goes to `scene`, or back to `screen` when it is there already. Needs a recording of screen and camera, and a
    /// camera that gives pictures.
    void setScene(Scene scene);
    void toggleDrawing();
    void toggleBoard();
    void toggleKit();
    /// The first press shows the script, later ones start and stop it.
    void prompterKey();

signals:
    void stateChanged();
    void elapsedChanged();
    void flashChanged();
    void zoomOnChanged();
    void regionOnChanged();
    void zoomLevelNowChanged();
    void zoomFollowingChanged();
    void spotlightOnChanged();
    void presenterOnChanged();
    void sceneChanged();

private:
    using Task = QCoro::Task<void>;
    /// Tells a coroutine after a wait whether the controller still exists.
    using Life = std::weak_ptr<const int>;

    // RecorderController.cpp: the state table, the clock, messages
    template <typename T>
    void publish(T& field, T value, void (RecorderController::*changed)());
    void setState(State state);
    void schedule(std::function<void()> work);
    void log(const QString& line) const;
    double now() const;
    double recordedSeconds() const;
    void startTicker();
    void tick();
    void showFlash(const QString& text, double seconds);
    QCoro::Task<bool> confirm(QString title, QString text, QString ok);
    QCoro::Task<int> ask(QString title, QString text, QStringList buttons, bool firstIsDestructive);
    Task inform(QString title, QString text);
    Task runCancel();
    Task runRestart();
    QCoro::Task<bool> confirmPaused(QString title, QString text, QString ok);
    void hidePreviews();

    // SessionStart.cpp
    enum class StartAfter { nothing, restart };
    Task runStart(StartAfter after);
    QCoro::Task<bool> agreedToStart();
    QCoro::Task<bool> checkedSources(RecordMode mode);
    QCoro::Task<Result<ShareableContent>> queryContent();
    Task wait(double seconds);
    Task setStage(Screen screen, RecordMode mode);
    QCoro::Task<Result<CapturePlan>> planFromWindows(Screen screen, RecordMode mode);
    void keepPreviewsOn(const Screen& screen, RecordMode mode);
    QCoro::Task<Result<void>> beginCapture(Screen screen, RecordMode mode);
    void captureEnded(const std::optional<Error>& error);
    Task addOverlays();
    std::unique_ptr<CaptureRecorder> makeRecorder();
    CaptureRecorder::Request captureRequest(const CapturePlan& plan, RecordMode mode);
    OwnWindows ownWindows() const;
    void showForCapture(const Screen& screen, RecordMode mode);
    void parkSurfaces();
    void startLive(const Screen& screen, RecordMode mode);
    void startSpotlight(const Screen& screen);
    void startClock();

    // SessionFailures.cpp
    void abort();
    Task failQuery(Error error);
    Task failNoCamera();
    Task failStart(Error error, RecordMode mode);
    Task screenPermissionAlert();

    // SessionPreview.cpp
    Task refreshPreview();
    std::optional<Screen> targetScreen() const;
    QString preflightWarning() const;
    bool authorized(DevicePermissions::Media media) const;
    std::optional<std::string> cameraFor(const QString& id) const;
    std::optional<std::string> microphone() const;

    // SessionFinish.cpp
    struct Saved;
    Task save(Saved saved);
    QCoro::Task<Result<std::filesystem::path>> stopCapture();
    Task failSave(std::filesystem::path url, Error error);
    void discard(bool keepPreview, std::function<void()> then);
    Task runDiscard(std::optional<std::filesystem::path> url, bool keepPreview, std::function<void()> then);
    void endLive();
    void finish(bool keepPreview);
    void resetEffects();

    // LiveControl.cpp
    void mark(const QString& title, std::optional<QString> location, double time);
    void checkMicrophone();
    std::optional<double> microphoneLevel() const;
    void setRegion(bool on);
    void pick(std::optional<Rect> current, QString prompt, std::function<void(const Rect&)> picked);

    // SessionDisk.cpp
    void startDiskWatch();
    void checkDisk();

    // Scenes.cpp
    void watchPresenter();
    void settleScene();
    void leaveColumn();
    void enterScene(Scene scene);
    void enterColumn();

    // ZoomControl.cpp
    void startZoomTracking(const Screen& screen);
    void zoomTick();
    bool canZoom() const;
    void setZoom(bool on);
    void applyLevel(double level);

    // ZoomMonitors.cpp
    void keepMonitor(InputMonitors::Token monitor);
    void watchClickTimes();
    void watchGestures();
    std::function<void(std::function<void(RecorderController&)>)> ofThisCapture();
    bool isOnOwnSurface() const;
    void leftMouseDown();
    void zoomGesture(double factor);

    SessionServices services_;
    SessionSurfaces surfaces_;

    State state_ = State::idle;
    double elapsed_ = 0;
    std::optional<QString> flash_;
    bool zoomOn_ = false;
    bool regionOn_ = false;
    double zoomLevelNow_ = 2.0;
    bool zoomFollowing_ = true;
    bool spotlightOn_ = false;
    bool presenterOn_ = false;
    Scene scene_ = Scene::screen;
    Scene shownPresenter_ = Scene::screen; ///< the scene that the presenter last came in for

    std::unique_ptr<MainTimer> zoomTimer_;
    std::vector<InputMonitors::Token> clickMonitors_; ///< those that the platform granted
    double lastActivity_ = 0;                         ///< seconds of the clock, as all stamps here
    Point lastMouse_;                                 ///< global points
    std::unique_ptr<CaptureRecorder> starting_; ///< until nothing can fail any more; not in a coroutine, so that it
                                                ///< ends with this object
    std::unique_ptr<CaptureRecorder> recorder_;
    std::optional<std::filesystem::path> fileURL_;
    std::vector<double> markers_;
    std::vector<Chapter> chapters_;
    double accumulated_ = 0;
    std::optional<double> segmentStart_;
    std::unique_ptr<MainTimer> ticker_;
    std::unique_ptr<MainTimer> diskTimer_;
    DiskGuard diskGuard_;
    std::optional<QString> endedBy_; ///< what ends the recording, when not the user
    bool endedEarly_ = false;        ///< the capture, while the session was still preparing
    std::optional<Screen> recordingScreen_;
    std::map<int, CaptureWindow> overlayWindows_;
    std::map<int, Size> overlaySizes_;
    std::optional<double> quietSince_;
    double lastMicWarning_ = -std::numeric_limits<double>::infinity();

    int dialogs_ = 0;       ///< of this session that stand unanswered
    unsigned captures_ = 0; ///< made so far; tells late news of an earlier capture from those of this one
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
};

template <typename T>
void RecorderController::publish(T& field, T value, void (RecorderController::*changed)()) {
    if (!(field == value)) {
        field = std::move(value);
        emit(this->*changed)();
    }
}

} // namespace velmo
