#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// One power source as the system describes it; a missing entry is absent.
struct PowerSource {
    std::optional<std::string> state; ///< "Battery Power" or "AC Power"
    std::optional<int> currentCapacity;
    std::optional<int> maxCapacity;
};

inline constexpr const char* kBatteryPower = "Battery Power";

class PowerSources {
public:
    virtual ~PowerSources() = default;
    /// Empty when it cannot be had.
    virtual std::vector<PowerSource> list() const = 0;
};

class DiskSpace {
public:
    virtual ~DiskSpace() = default;
    /// Bytes that a user's file can still take on the volume of `path`; absent when it cannot be read.
    virtual std::optional<std::int64_t> available(const std::filesystem::path& path) const = 0;
    /// Bytes in a file; absent when it cannot be read.
    virtual std::optional<std::int64_t> size(const std::filesystem::path& file) const = 0;
};

} // namespace velmo
