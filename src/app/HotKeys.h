#pragma once

#include "platform/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace velmo {

/// The global keys: which are registered now, what each does, and which a running recording has. Main thread.
class HotKeys {
public:
    using Action = std::function<void()>;
    /// Runs work on the main thread, later, never inside the call.
    using Schedule = std::function<void(std::function<void()>)>;
    using Log = std::function<void(const std::string&)>;

    struct RecordingKey {
        std::uint32_t id = 0;
        int key = 0; ///< virtual key code
        Action action;
    };

    /// `service` is borrowed and must outlive this object.
    HotKeys(HotKeyService& service, std::vector<RecordingKey> recordingKeys, Schedule schedule, Log log);
    /// Releases every key that is registered.
    ~HotKeys();
    HotKeys(const HotKeys&) = delete;
    HotKeys& operator=(const HotKeys&) = delete;

    /// Once, at launch.
    void install();
    /// Replaces what the id stood for. A key that cannot be had is logged; nobody else is told.
    void registerKey(std::uint32_t id, int keyCode, std::uint32_t modifiers, Action action);
    void unregister(std::uint32_t id);
    /// Registers or releases all keys of a running recording.
    void setRecordingKeys(bool on);

private:
    void fire(std::uint32_t id) const;

    HotKeyService& service_;
    std::vector<RecordingKey> recordingKeys_;
    Schedule schedule_;
    Log log_;
    std::set<std::uint32_t> refs_; ///< registered with the system now
    std::map<std::uint32_t, Action> handlers_;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0); ///< a press may be on its way when this goes
};

} // namespace velmo
