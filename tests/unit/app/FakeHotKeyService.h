#pragma once

#include "platform/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// A keyboard that remembers who holds what.
class FakeHotKeyService final : public HotKeyService {
public:
    struct Key {
        int keyCode = 0;
        std::uint32_t modifiers = 0;
    };

    void installHandler(std::function<void(std::uint32_t)> pressed) override {
        handler = std::move(pressed);
        ++handlersInstalled;
    }
    Status registerHotKey(std::uint32_t id, int keyCode, std::uint32_t modifiers) override {
        calls.push_back("register " + std::to_string(id));
        if (const auto taken = takenKeyCodes.find(keyCode); taken != takenKeyCodes.end()) {
            return taken->second;
        }
        doubleRegistrations += registered.count(id) > 0 ? 1 : 0;
        registered[id] = {keyCode, modifiers};
        return 0;
    }
    void unregisterHotKey(std::uint32_t id) override {
        calls.push_back("unregister " + std::to_string(id));
        registered.erase(id);
    }

    std::function<void(std::uint32_t)> handler;
    int handlersInstalled = 0;
    int doubleRegistrations = 0;
    std::map<int, Status> takenKeyCodes;
    std::map<std::uint32_t, Key> registered;
    std::vector<std::string> calls;
};

} // namespace velmo::test
