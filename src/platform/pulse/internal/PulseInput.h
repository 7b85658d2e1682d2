#pragma once

#include "base/Clock.h"
#include "platform/AudioInput.h"
#include "platform/pulse/CaptureClock.h"
#include "platform/pulse/internal/DeliveryGate.h"
#include "platform/pulse/internal/PulseSession.h"

#include <pulse/stream.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// One record stream that is there whenever its source is: opened, closed and opened again as the session reports.
/// Made and destroyed on any thread but the session's; all else runs on the session's thread.
class PulseInput final : public AudioInput, private PulseSession::Client {
public:
    /// `microphone` absent: what the default sink plays, whichever that is.
    PulseInput(std::shared_ptr<PulseSession> session, const Clock& clock, std::optional<std::string> microphone,
               SerialQueue& queue, AudioInputService::Handler handler);
    ~PulseInput() override;

private:
    void sessionChanged() override;
    std::optional<std::string> wantedSource() const;
    void open(const std::string& source);
    void close();
    void stateChanged();
    void read();
    void askForTiming();
    void timingArrived();
    void take(const void* data, std::size_t bytes);
    void deliverKept();

    const std::shared_ptr<PulseSession> session_;
    const Clock& clock_;
    const std::optional<std::string> microphone_;
    const std::shared_ptr<DeliveryGate> gate_;

    // The session's thread, or its Lock.
    pa_stream* stream_ = nullptr;
    std::string openedOn_;
    pa_operation* timingAsked_ = nullptr;
    int readsSinceTiming_ = 0;
    CaptureClock captureClock_;
    std::vector<AudioRef> kept_; // read, not timed yet
};

} // namespace velmo
