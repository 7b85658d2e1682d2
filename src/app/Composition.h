#pragma once

#include "app/AppDelegate.h"

#include <memory>

namespace velmo {

class RecordingRescue;
struct LaunchOptions;

/// The composition root: makes every real object of the program once, hands each what it needs, and registers those
/// that are shared. Lives inside the QApplication's life; takes all apart in the reverse order. Main thread.
class Composition {
public:
    explicit Composition(const LaunchOptions& options);
    ~Composition();
    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;

    AppDelegate& delegate();
    RecordingRescue& rescue();
    RecorderController& recorder();

private:
    struct Platform;
    struct Stores;
    struct Session;
    struct Surfaces;

    Shell shell();
    SessionSurfaces sessionSurfaces();

    // In the order in which they are made, each from those before it.
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<Stores> stores_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<Surfaces> surfaces_;
    std::unique_ptr<HotKeys> hotKeys_;
    std::unique_ptr<AppDelegate> delegate_;
};

} // namespace velmo
