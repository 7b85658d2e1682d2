#pragma once

#include <cstdint>
#include <functional>
#include <pulse/pulseaudio.h>
#include <span>
#include <vector>

/// A connection to the sound server on a thread of its own, and mono streams of floats on the sink `micfeed`.
/// Without a server nothing ever happens.
class MicFeed {
public:
    static constexpr int kRate = 48000;

    /// `ready` comes on the server's thread once there is a connection, which is begun by `start`.
    explicit MicFeed(std::function<void()> ready);
    ~MicFeed();
    MicFeed(const MicFeed&) = delete;
    MicFeed& operator=(const MicFeed&) = delete;

    void start();

    /// In `ready`, once. `fill` is asked for what is played next, on the server's thread. `bufferBytes`: how far ahead.
    void play(const char* name, std::uint32_t bufferBytes, std::function<void(std::span<float>)> fill);
    /// In `ready`. Borrowed, not connected yet.
    pa_stream* newStream(const char* name);

    /// The stream of `play`; null before it. Only on the server's thread, or under the lock.
    pa_stream* played() const { return played_; }
    void lock() const { pa_threaded_mainloop_lock(loop_); }
    void unlock() const { pa_threaded_mainloop_unlock(loop_); }

    /// All left to the server.
    static pa_buffer_attr serversChoice();

private:
    void write(std::size_t bytes);

    std::function<void()> ready_;
    std::function<void(std::span<float>)> fill_;
    pa_threaded_mainloop* loop_;
    pa_context* context_;
    std::vector<pa_stream*> streams_;
    pa_stream* played_ = nullptr;
    std::vector<float> buffer_;
};
