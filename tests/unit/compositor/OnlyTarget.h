#pragma once

#include <cstdint>
#include <hwy/targets.h>

namespace velmo::test {

/// Limits the machine to one instruction set for as long as it lives.
class OnlyTarget {
public:
    explicit OnlyTarget(std::int64_t target) {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
    ~OnlyTarget() {
        hwy::SetSupportedTargetsForTest(0);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
    OnlyTarget(const OnlyTarget&) = delete;
    OnlyTarget& operator=(const OnlyTarget&) = delete;
};

/// Calls `check` with the name of each instruction set of this machine, limited to it. How many there are.
template <typename Check>
int onEachTarget(Check check) {
    int count = 0;
    const std::int64_t all = hwy::SupportedTargets();
    for (std::int64_t left = all; left != 0; left &= left - 1) {
        const std::int64_t target = left & -left;
        const OnlyTarget only(target);
        check(hwy::TargetName(target));
        ++count;
    }
    return count;
}

} // namespace velmo::test
