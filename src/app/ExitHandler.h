#pragma once

namespace velmo {

class RecordingRescue;

/// Qt ends the process by `exit` on the spot when its connection to the X server breaks. While one of these exists,
/// that first lets `rescue` finish a running recording, for half a minute at most, and then leaves without the
/// destructors that nobody can count on any more. One at a time. Main thread.
class ExitHandler {
public:
    /// `rescue` is borrowed.
    explicit ExitHandler(RecordingRescue& rescue);
    ~ExitHandler();
    ExitHandler(const ExitHandler&) = delete;
    ExitHandler& operator=(const ExitHandler&) = delete;

    /// To be called when a recording begins: what was made before the last call still exists when the handler runs.
    void renew();
};

} // namespace velmo
