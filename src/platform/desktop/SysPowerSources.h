#pragma once

#include "platform/Machine.h"

#include <filesystem>

namespace velmo {

/// The batteries that the kernel lists. Any thread; reads a few small files at each call.
///
/// A battery's state is "Battery Power" when no mains supply is online and it is not charging. Its capacity is the
/// per cent that the kernel tells, else charge or energy against its full value. Batteries of mice, pens and phones
/// (scope "Device") are left out.
class SysPowerSources final : public PowerSources {
public:
    explicit SysPowerSources(std::filesystem::path folder = "/sys/class/power_supply");
    std::vector<PowerSource> list() const override;

private:
    std::filesystem::path folder_;
};

} // namespace velmo
