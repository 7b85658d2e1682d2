#pragma once

#include <cstdint>
#include <vector>

namespace velmo::x11 {

/// The order of a parent's children, kept up from what the server tells. Ids are window ids; 0 is no window.
class StackOrder {
public:
    const std::vector<std::uint32_t>& bottomToTop() const { return order_; }
    bool contains(std::uint32_t window) const;

    void reset(std::vector<std::uint32_t> bottomToTop) { order_ = std::move(bottomToTop); }
    /// On top of all, where a new child is put.
    void raise(std::uint32_t window);
    /// Below all.
    void lower(std::uint32_t window) { placeAbove(window, 0); }
    void remove(std::uint32_t window);
    /// Directly above `sibling`; 0 means below all. True when the order is another one now. A sibling that is not
    /// known leaves the window where it is.
    bool placeAbove(std::uint32_t window, std::uint32_t sibling);

private:
    std::vector<std::uint32_t> order_;
};

} // namespace velmo::x11
