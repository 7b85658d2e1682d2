#pragma once

#include "base/Clock.h"
#include "platform/InputMonitors.h"

#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace velmo {

/// Input monitors on XInput 2 raw events. One monitor hears what is meant for this program and what is meant for
/// others alike, so that nothing has to be installed twice.
///
/// Handlers are called on the thread "velmo.x11.input", which lives from the first monitor on and sleeps while there
/// is none. The first `add...` makes a short exchange with the server; null is returned where that fails. A server
/// that goes away ends all monitors silently. Times hold to within two milliseconds: those of the server's stamps,
/// whose clock is measured at the first monitor and every ten seconds.
class X11InputMonitors final : public InputMonitors {
public:
    /// `clock` is borrowed, must outlive this object, and must run with CLOCK_MONOTONIC. Tokens may outlive it.
    X11InputMonitors(std::optional<std::string> displayName, const Clock& clock);
    ~X11InputMonitors() override;
    X11InputMonitors(const X11InputMonitors&) = delete;
    X11InputMonitors& operator=(const X11InputMonitors&) = delete;

    Token addMouseButtons(std::function<void(double time)> moved) override;
    Token addLeftMouseDown(std::function<void()> pressed) override;
    Token addScrollAndMagnify(std::function<void(const InputGesture&)> made) override;

private:
    struct Handlers;
    struct Entry;
    class Registry;
    class Monitor;

    Token add(Handlers handlers);
    bool isRunning();
    void end();

    std::optional<std::string> displayName_;
    const Clock& clock_;
    std::shared_ptr<Registry> registry_;
    std::thread thread_;
};

} // namespace velmo
