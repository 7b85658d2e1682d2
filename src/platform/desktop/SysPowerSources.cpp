#include "platform/desktop/SysPowerSources.h"

#include <charconv>
#include <fstream>
#include <utility>

namespace velmo {
namespace {

namespace fs = std::filesystem;

/// The first line of an attribute; absent when there is none.
std::optional<std::string> attribute(const fs::path& supply, const char* name) {
    std::ifstream file(supply / name);
    std::string line;
    if (!std::getline(file, line)) {
        return std::nullopt;
    }
    return line;
}

std::optional<int> number(const fs::path& supply, const char* name) {
    const auto text = attribute(supply, name);
    int value = 0;
    if (!text || std::from_chars(text->data(), text->data() + text->size(), value).ec != std::errc{}) {
        return std::nullopt;
    }
    return value;
}

void readCapacity(const fs::path& battery, PowerSource& source) {
    if (const auto percent = number(battery, "capacity")) {
        source.currentCapacity = percent;
        source.maxCapacity = 100;
        return;
    }
    for (const auto& [now, full] : {std::pair{"charge_now", "charge_full"}, std::pair{"energy_now", "energy_full"}}) {
        source.currentCapacity = number(battery, now);
        source.maxCapacity = number(battery, full);
        if (source.currentCapacity && source.maxCapacity) {
            return;
        }
    }
}

bool isMachineBattery(const fs::path& supply) {
    return attribute(supply, "type") == "Battery" && attribute(supply, "scope").value_or("System") != "Device" &&
           number(supply, "present").value_or(1) != 0;
}

} // namespace

SysPowerSources::SysPowerSources(fs::path folder) : folder_(std::move(folder)) {}

std::vector<PowerSource> SysPowerSources::list() const {
    std::vector<fs::path> batteries;
    bool isMainsOnline = false;
    std::error_code error;
    for (fs::directory_iterator it(folder_, error), end; !error && it != end; it.increment(error)) {
        if (isMachineBattery(it->path())) {
            batteries.push_back(it->path());
        } else if (attribute(it->path(), "type") != "Battery" && number(it->path(), "online").value_or(0) > 0) {
            isMainsOnline = true;
        }
    }
    std::vector<PowerSource> sources;
    for (const fs::path& battery : batteries) {
        const auto status = attribute(battery, "status");
        const bool isFed = isMainsOnline || status == "Charging" || status == "Full" || status == "Not charging";
        PowerSource& source = sources.emplace_back();
        source.state = isFed ? "AC Power" : kBatteryPower;
        readCapacity(battery, source);
    }
    return sources;
}

} // namespace velmo
