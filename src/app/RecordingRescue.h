#pragma once

#include "session/Collaborators.h"
#include "session/RecorderController.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace velmo {

/// Sees a running recording into the library when the program has to go: a signal, the end of the user's session, the
/// X server gone. Main thread.
///
/// It stands between the session and two of its surroundings, the library window and the messages: showing the window
/// is the last step of every ending, and once the program is leaving neither can be shown any more. Messages then go
/// to the log.
class RecordingRescue final : public QObject {
    Q_OBJECT

public:
    using Log = std::function<void(const std::string&)>;

    /// Both are borrowed and must outlive this object.
    RecordingRescue(LibraryWindowPort& window, AlertPort& alerts, Log log);
    ~RecordingRescue() override;

    /// What the session is given in place of the real ones.
    LibraryWindowPort& libraryWindow();
    AlertPort& alerts();
    /// Once, as soon as there is a controller, which is borrowed until `forget`.
    void watch(RecorderController& recorder);
    void forget();

    /// A recording was made that has not reached the library yet.
    bool isPending() const { return pending_; }
    /// Stops what is recorded, and calls `left` when it is saved or lost; at once when there is nothing to save.
    void leave(std::function<void()> left);
    /// The same where the event loop does not run any more: waits on the spot, at most so long. Calls only what was
    /// posted to the main thread, never the window system. True when everything is saved.
    bool leaveNow(std::chrono::milliseconds limit);

private:
    class Window;
    class Messages;

    void beginToLeave();
    void settle();

    std::unique_ptr<Window> window_;
    std::unique_ptr<Messages> messages_;
    Log log_;
    RecorderController* recorder_ = nullptr;
    bool pending_ = false;
    bool leaving_ = false;
    std::vector<std::function<void()>> left_;
};

} // namespace velmo
