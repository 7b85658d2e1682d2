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
    /// Replaces what the id stood for. A key that cannot be had is logged, and is among `taken`.
    void registerKey(std::uint32_t id, int keyCode, std::uint32_t modifiers, Action action);
    void unregister(std::uint32_t id);
    /// Registers or releases all keys of a running recording.
    void setRecordingKeys(bool on);

    /// The modifiers of the recording's keys.
    std::uint32_t modifiers() const { return modifiers_; }
    /// From now on, and at once for all keys that are registered, those that could not be had among them.
    void setModifiers(std::uint32_t modifiers);
    /// The ids, of those that are registered and of the recording's, that another program holds at this moment. Keys
    /// that were not registered are tried and given back.
    std::set<std::uint32_t> taken();

private:
    struct Key {
        int code = 0;
        std::uint32_t modifiers = 0;
        Action action;
    };

    HotKeyService::Status obtain(std::uint32_t id, const Key& key);
    void obtainOrLog(std::uint32_t id, const Key& key);
    void fire(std::uint32_t id) const;

    HotKeyService& service_;
    std::vector<RecordingKey> recordingKeys_;
    Schedule schedule_;
    Log log_;
    std::uint32_t modifiers_ = kControlModifier;
    std::set<std::uint32_t> refs_; ///< registered with the system now
    std::map<std::uint32_t, Key> handlers_;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0); ///< a press may be on its way when this goes
};

} // namespace velmo
