#include "compositor/internal/LayerList.h"

#include "support/Pictures.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace velmo::internal {
namespace {

/// Covers everything with one value.
class FlatLayer final : public Layer {
public:
    explicit FlatLayer(std::uint8_t value) : value_(value) {}
    void paint(const FrameRow& row, const LayersBelow&) override {
        ++rows;
        std::memset(row.data, value_, static_cast<std::size_t>(row.width * row.unitBytes));
    }
    int rows = 0;

private:
    std::uint8_t value_;
};

/// Changes what is below in place, as a light does.
class AddingLayer final : public Layer {
public:
    explicit AddingLayer(int amount) : amount_(amount) {}
    void paint(const FrameRow& row, const LayersBelow& below) override {
        below.paint(row);
        for (int i = 0; i < row.width * row.unitBytes; ++i) {
            row.data[i] = static_cast<std::uint8_t>(row.data[i] * 2 + amount_);
        }
    }

private:
    int amount_;
};

/// Shows the row that lies `shift` rows lower, through a line of its own, as a layer that moves the picture does.
class ShiftingLayer final : public Layer {
public:
    explicit ShiftingLayer(int shift, int width) : shift_(shift), line_(static_cast<std::size_t>(width * 4 + 64)) {}
    void paint(const FrameRow& row, const LayersBelow& below) override {
        FrameRow other = row;
        other.y = row.y + shift_;
        other.data = line_.data();
        below.paint(other);
        std::memcpy(row.data, line_.data(), static_cast<std::size_t>(row.width * row.unitBytes));
    }

private:
    int shift_;
    std::vector<std::uint8_t> line_;
};

/// Writes its plane and row number.
class NumberingLayer final : public Layer {
public:
    void paint(const FrameRow& row, const LayersBelow&) override {
        std::memset(row.data, row.plane * 100 + row.y, static_cast<std::size_t>(row.width * row.unitBytes));
    }
};

TEST(LayerList, EachLayerSeesWhatLiesBelowItAndEachRowIsPaintedOnce) {
    const FrameRef target = PixelBuffer::create(PixelFormat::nv12, 10, 6);
    FlatLayer flat(5);
    AddingLayer one(1);
    AddingLayer three(3);
    LayerList layers;
    layers.add(flat);
    layers.add(one);
    layers.add(three);
    layers.paint(*target);
    EXPECT_EQ(target->plane(0).row(0)[0], (5 * 2 + 1) * 2 + 3);
    EXPECT_EQ(target->plane(1).row(2)[9], (5 * 2 + 1) * 2 + 3);
    EXPECT_EQ(flat.rows, 6 + 3);
}

TEST(LayerList, ALayerThatCoversEverythingAsksForNothingBelow) {
    const FrameRef target = PixelBuffer::create(PixelFormat::bgra, 10, 6);
    FlatLayer hidden(5);
    FlatLayer shown(6);
    LayerList layers;
    layers.add(hidden);
    layers.add(shown);
    layers.paint(*target);
    EXPECT_EQ(target->plane(0).row(5)[39], 6);
    EXPECT_EQ(hidden.rows, 0);
}

TEST(LayerList, ALayerMayTakeOtherRowsFromBelow) {
    const FrameRef target = PixelBuffer::create(PixelFormat::nv12, 10, 6);
    NumberingLayer numbers;
    ShiftingLayer shift(2, 10);
    AddingLayer twice(0);
    LayerList layers;
    layers.add(numbers);
    layers.add(shift);
    layers.add(twice);
    layers.paint(*target);
    EXPECT_EQ(target->plane(0).row(3)[4], (3 + 2) * 2);
    EXPECT_EQ(target->plane(1).row(1)[4], (100 + 1 + 2) * 2);
}

TEST(LayerList, AFullListLeavesTheRestOut) {
    const FrameRef target = PixelBuffer::create(PixelFormat::nv12, 2, 2);
    FlatLayer shown(7);
    FlatLayer beyond(9);
    LayerList layers;
    for (int i = 0; i < LayerList::kCapacity; ++i) {
        layers.add(shown);
    }
    layers.add(beyond);
    layers.paint(*target);
    EXPECT_EQ(target->plane(0).row(0)[0], 7);
}

} // namespace
} // namespace velmo::internal
