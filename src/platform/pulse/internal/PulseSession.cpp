#include "platform/pulse/internal/PulseSession.h"

#include <pulse/error.h>
#include <pulse/proplist.h>
#include <pulse/rtclock.h>
#include <pulse/subscribe.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace velmo {

namespace {

constexpr std::chrono::milliseconds kFirstWait{250};
constexpr pa_usec_t kFirstReconnect = 250'000;
constexpr pa_usec_t kLastReconnect = 2'000'000;
constexpr pa_usec_t kClientRetry = 500'000;

PulseSession& session(void* self) {
    return *static_cast<PulseSession*>(self);
}

void release(pa_operation* operation) {
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

} // namespace

PulseSession::PulseSession() : loop_(pa_threaded_mainloop_new()), reconnectAfter_(kFirstReconnect) {
    pa_threaded_mainloop_set_name(loop_, "velmo.pulse");
    pa_threaded_mainloop_start(loop_);
    // Connecting reads files and talks to a socket: on the session's own thread.
    const Lock lock(*this);
    pa_mainloop_api_once(
        pa_threaded_mainloop_get_api(loop_), [](pa_mainloop_api*, void* self) { session(self).connect(); }, this);
}

PulseSession::~PulseSession() {
    pa_threaded_mainloop_stop(loop_);
    cancelTimer(reconnectTimer_);
    cancelTimer(clientTimer_);
    if (context_ != nullptr) {
        pa_context_set_state_callback(context_, nullptr, nullptr);
        pa_context_disconnect(context_);
        pa_context_unref(context_);
    }
    pa_threaded_mainloop_free(loop_);
}

SoundDevices PulseSession::devices() const {
    std::unique_lock lock(mutex_);
    waitForFirstAnswer(lock);
    return devices_;
}

void PulseSession::waitForFirstAnswer(std::unique_lock<std::mutex>& lock) const {
    if (!std::exchange(waited_, true)) {
        firstAnswer_.wait_for(lock, kFirstWait, [this] { return answered_; });
    }
}

void PulseSession::addClient(Client& client) {
    clients_.push_back(&client);
}

void PulseSession::removeClient(Client& client) {
    std::erase(clients_, &client);
}

void PulseSession::callClients() {
    for (Client* client : clients_) {
        client->sessionChanged();
    }
}

void PulseSession::callClientsLater() {
    if (clientTimer_ == nullptr) {
        startTimer(clientTimer_, kClientRetry, [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
            session(self).cancelTimer(session(self).clientTimer_);
            session(self).callClients();
        });
    }
}

void PulseSession::startTimer(pa_time_event*& timer, pa_usec_t after, pa_time_event_cb_t callback) {
    cancelTimer(timer);
    timer = pa_context_rttime_new(context_, pa_rtclock_now() + after, callback, this);
}

void PulseSession::cancelTimer(pa_time_event*& timer) {
    if (timer != nullptr) {
        pa_threaded_mainloop_get_api(loop_)->time_free(timer);
        timer = nullptr;
    }
}

void PulseSession::connect() {
    cancelTimer(reconnectTimer_);
    if (context_ != nullptr) {
        pa_context_set_state_callback(context_, nullptr, nullptr);
        pa_context_unref(context_);
    }
    context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), "Velmo Studio");
    pa_context_set_state_callback(
        context_, [](pa_context*, void* self) { session(self).stateChanged(); }, this);
    if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        serverGone();
    }
}

void PulseSession::stateChanged() {
    switch (pa_context_get_state(context_)) {
    case PA_CONTEXT_READY:
        ready_ = true;
        reconnectAfter_ = kFirstReconnect;
        pa_context_set_subscribe_callback(
            context_, [](pa_context*, pa_subscription_event_type_t, uint32_t, void* self) { session(self).refresh(); },
            this);
        release(pa_context_subscribe(context_,
                                     static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK |
                                                                         PA_SUBSCRIPTION_MASK_SOURCE |
                                                                         PA_SUBSCRIPTION_MASK_SERVER),
                                     nullptr, nullptr));
        refresh();
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        serverGone();
        break;
    default:
        break;
    }
}

void PulseSession::serverGone() {
    // pa_context_connect reports a failure both by its result and by the state.
    if (reconnectTimer_ != nullptr) {
        return;
    }
    ready_ = false;
    refreshing_ = false;
    refreshAgain_ = false;
    publish({});
    // The context is let go by connect(): here libpulse may still be using it.
    startTimer(reconnectTimer_, std::exchange(reconnectAfter_, std::min(reconnectAfter_ * 2, kLastReconnect)),
               [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) { session(self).connect(); });
}

void PulseSession::refresh() {
    if (!ready_) {
        return;
    }
    if (std::exchange(refreshing_, true)) {
        refreshAgain_ = true;
        return;
    }
    refreshAgain_ = false;
    arriving_ = {};
    release(pa_context_get_server_info(context_, &PulseSession::onServer, this));
}

void PulseSession::onServer(pa_context* context, const pa_server_info* info, void* self) {
    SoundDevices& arriving = session(self).arriving_;
    if (info != nullptr) {
        arriving.defaultSource = info->default_source_name != nullptr ? info->default_source_name : "";
        arriving.defaultSink = info->default_sink_name != nullptr ? info->default_sink_name : "";
    }
    release(pa_context_get_source_info_list(context, &PulseSession::onSource, self));
}

void PulseSession::onSource(pa_context*, const pa_source_info* info, int end, void* self) {
    if (end != 0 || info == nullptr) {
        session(self).refreshed();
        return;
    }
    SoundSource source;
    source.name = info->name != nullptr ? info->name : "";
    source.description = info->description != nullptr ? info->description : "";
    if (info->monitor_of_sink != PA_INVALID_INDEX) {
        source.monitorOf = info->monitor_of_sink_name != nullptr ? info->monitor_of_sink_name : "";
    }
    session(self).arriving_.sources.push_back(std::move(source));
}

void PulseSession::refreshed() {
    refreshing_ = false;
    publish(std::move(arriving_));
    arriving_ = {};
    if (refreshAgain_) {
        refresh();
    }
}

void PulseSession::publish(SoundDevices devices) {
    {
        const std::lock_guard lock(mutex_);
        devices_ = std::move(devices);
        answered_ = true;
    }
    firstAnswer_.notify_all();
    callClients();
}

} // namespace velmo
