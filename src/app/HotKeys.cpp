#include "app/HotKeys.h"

#include <utility>

namespace velmo {

HotKeys::HotKeys(HotKeyService& service, std::vector<RecordingKey> recordingKeys, Schedule schedule, Log log)
    : service_(service), recordingKeys_(std::move(recordingKeys)), schedule_(std::move(schedule)),
      log_(std::move(log)) {}

HotKeys::~HotKeys() {
    service_.installHandler(nullptr);
    for (const std::uint32_t id : refs_) {
        service_.unregisterHotKey(id);
    }
}

void HotKeys::install() {
    service_.installHandler([this](std::uint32_t id) {
        schedule_([this, id, life = std::weak_ptr(life_)] {
            if (!life.expired()) {
                fire(id);
            }
        });
    });
}

void HotKeys::registerKey(std::uint32_t id, int keyCode, std::uint32_t modifiers, Action action) {
    unregister(id);
    const Key& key = handlers_[id] = {keyCode, modifiers, std::move(action)};
    obtainOrLog(id, key);
}

HotKeyService::Status HotKeys::obtain(std::uint32_t id, const Key& key) {
    const HotKeyService::Status status = service_.registerHotKey(id, key.code, key.modifiers);
    if (status == 0) {
        refs_.insert(id);
    }
    return status;
}

void HotKeys::obtainOrLog(std::uint32_t id, const Key& key) {
    if (const HotKeyService::Status status = obtain(id, key); status != 0) {
        log_("atajo " + std::to_string(id) + " no disponible (" + std::to_string(status) + ")");
    }
}

void HotKeys::unregister(std::uint32_t id) {
    if (refs_.erase(id) > 0) {
        service_.unregisterHotKey(id);
    }
    handlers_.erase(id);
}

void HotKeys::setRecordingKeys(bool on) {
    for (const RecordingKey& entry : recordingKeys_) {
        unregister(entry.id);
        if (on) {
            registerKey(entry.id, entry.key, modifiers_, entry.action);
        }
    }
}

void HotKeys::setModifiers(std::uint32_t modifiers) {
    modifiers_ = modifiers;
    for (const std::uint32_t id : std::exchange(refs_, {})) {
        service_.unregisterHotKey(id);
    }
    for (auto& [id, key] : handlers_) {
        key.modifiers = modifiers;
        obtainOrLog(id, key);
    }
}

std::set<std::uint32_t> HotKeys::taken() {
    std::set<std::uint32_t> ids;
    for (const auto& [id, key] : handlers_) {
        if (refs_.count(id) == 0 && obtain(id, key) != 0) { // it may have become free
            ids.insert(id);
        }
    }
    for (const RecordingKey& entry : recordingKeys_) {
        if (handlers_.count(entry.id) > 0) {
            continue;
        }
        if (service_.registerHotKey(entry.id, entry.key, modifiers_) == 0) {
            service_.unregisterHotKey(entry.id);
        } else {
            ids.insert(entry.id);
        }
    }
    return ids;
}

void HotKeys::fire(std::uint32_t id) const {
    if (const auto handler = handlers_.find(id); handler != handlers_.end()) {
        const Action action = handler->second.action; // it may end the recording, and with it its own entry
        action();
    }
}

} // namespace velmo
