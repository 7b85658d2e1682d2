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
    handlers_[id] = std::move(action);
    const HotKeyService::Status status = service_.registerHotKey(id, keyCode, modifiers);
    if (status == 0) {
        refs_.insert(id);
    } else {
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
            registerKey(entry.id, entry.key, kControlModifier, entry.action);
        }
    }
}

void HotKeys::fire(std::uint32_t id) const {
    if (const auto handler = handlers_.find(id); handler != handlers_.end()) {
        const Action action = handler->second; // it may end the recording, and with it its own entry
        action();
    }
}

} // namespace velmo
