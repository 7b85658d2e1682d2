#pragma once

#include "platform/pulse/SoundDevices.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/thread-mainloop.h>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace velmo {

/// One connection to the sound server with the thread that serves it. Connects by itself, again and again, and keeps
/// a snapshot of the devices up to date.
///
/// Constructor, destructor and `devices` never run on the session's own thread. Clients hear on that thread, with its
/// lock held, that the connection or the devices changed, and read again.
class PulseSession {
public:
    class Client {
    public:
        virtual void sessionChanged() = 0;

    protected:
        ~Client() = default;
    };

    /// Holds the session's thread off. Any thread but its own.
    class Lock {
    public:
        explicit Lock(PulseSession& session) : loop_(session.loop_) { pa_threaded_mainloop_lock(loop_); }
        ~Lock() { pa_threaded_mainloop_unlock(loop_); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        pa_threaded_mainloop* loop_;
    };

    PulseSession();
    ~PulseSession();
    PulseSession(const PulseSession&) = delete;
    PulseSession& operator=(const PulseSession&) = delete;

    /// Any thread but the session's. Waits for the first answer of the server at most `kFirstWait`, once in the
    /// session's life.
    SoundDevices devices() const;

    // The rest on the session's thread or under Lock.

    /// Borrowed until removed.
    void addClient(Client& client);
    void removeClient(Client& client);
    /// Absent while there is no connection.
    pa_context* context() const { return ready_ ? context_ : nullptr; }
    const SoundDevices& currentDevices() const { return devices_; }
    /// Calls all clients a little later.
    void callClientsLater();

private:
    void connect();
    void stateChanged();
    void serverGone();
    void refresh();
    void refreshed();
    void publish(SoundDevices devices);
    void callClients();
    void waitForFirstAnswer(std::unique_lock<std::mutex>& lock) const;
    void startTimer(pa_time_event*& timer, pa_usec_t after, pa_time_event_cb_t callback);
    void cancelTimer(pa_time_event*& timer);

    static void onServer(pa_context*, const pa_server_info* info, void* self);
    static void onSource(pa_context*, const pa_source_info* info, int end, void* self);

    pa_threaded_mainloop* loop_ = nullptr;

    // The session's thread, or Lock.
    pa_context* context_ = nullptr;
    bool ready_ = false;
    pa_usec_t reconnectAfter_;
    pa_time_event* reconnectTimer_ = nullptr;
    pa_time_event* clientTimer_ = nullptr;
    std::vector<Client*> clients_;
    SoundDevices arriving_;
    bool refreshing_ = false;
    bool refreshAgain_ = false;

    // Under mutex_; devices_ is written by the session's thread only, which also reads it without.
    mutable std::mutex mutex_;
    mutable std::condition_variable firstAnswer_;
    mutable bool waited_ = false;
    bool answered_ = false;
    SoundDevices devices_;
};

} // namespace velmo
