#include "platform/x11/internal/StackOrder.h"

#include <gtest/gtest.h>

namespace velmo::x11 {
namespace {

using Order = std::vector<std::uint32_t>;

StackOrder stack(Order order) {
    StackOrder result;
    result.reset(std::move(order));
    return result;
}

TEST(StackOrder, ANewWindowIsOnTop) {
    StackOrder order = stack({1, 2});
    order.raise(3);
    EXPECT_EQ(order.bottomToTop(), (Order{1, 2, 3}));
}

TEST(StackOrder, AWindowGoesDirectlyAboveItsSibling) {
    StackOrder order = stack({1, 2, 3, 4});
    EXPECT_TRUE(order.placeAbove(1, 3));
    EXPECT_EQ(order.bottomToTop(), (Order{2, 3, 1, 4}));
    EXPECT_TRUE(order.placeAbove(4, 2));
    EXPECT_EQ(order.bottomToTop(), (Order{2, 4, 3, 1}));
}

TEST(StackOrder, NoSiblingMeansTheBottom) {
    StackOrder order = stack({1, 2, 3});
    EXPECT_TRUE(order.placeAbove(3, 0));
    EXPECT_EQ(order.bottomToTop(), (Order{3, 1, 2}));
}

TEST(StackOrder, AnEventThatChangesNothingSaysSo) {
    StackOrder order = stack({1, 2, 3});
    EXPECT_FALSE(order.placeAbove(2, 1));
    EXPECT_FALSE(order.placeAbove(1, 0));
    EXPECT_FALSE(order.placeAbove(2, 2));
}

TEST(StackOrder, WindowsThatAreNotKnownAreLeftAlone) {
    StackOrder order = stack({1, 2});
    EXPECT_FALSE(order.placeAbove(9, 1));
    EXPECT_FALSE(order.placeAbove(1, 9));
    order.remove(9);
    EXPECT_EQ(order.bottomToTop(), (Order{1, 2}));
}

} // namespace
} // namespace velmo::x11
