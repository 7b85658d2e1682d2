#include "platform/x11/internal/StackOrder.h"

#include <algorithm>

namespace velmo::x11 {

bool StackOrder::contains(std::uint32_t window) const {
    return std::find(order_.begin(), order_.end(), window) != order_.end();
}

void StackOrder::raise(std::uint32_t window) {
    remove(window);
    order_.push_back(window);
}

void StackOrder::remove(std::uint32_t window) {
    std::erase(order_, window);
}

bool StackOrder::placeAbove(std::uint32_t window, std::uint32_t sibling) {
    const auto at = std::find(order_.begin(), order_.end(), window);
    if (at == order_.end() || (sibling != 0 && !contains(sibling)) || window == sibling) {
        return false;
    }
    const std::uint32_t below = at == order_.begin() ? 0 : *(at - 1);
    if (below == sibling) {
        return false;
    }
    order_.erase(at);
    auto place = order_.begin();
    if (sibling != 0) {
        place = std::find(order_.begin(), order_.end(), sibling) + 1;
    }
    order_.insert(place, window);
    return true;
}

} // namespace velmo::x11
