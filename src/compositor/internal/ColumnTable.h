#pragma once

#include "compositor/internal/AxisMap.h"

#include <cstdint>
#include <vector>

namespace velmo::internal {

/// How the components of one output row are gathered from a source row, worked out once per map.
///
/// Components come in groups of eight bytes. While a picture is not shrunk to much less than two thirds, both
/// neighbours of all eight lie within the 16 source bytes from `offset`; else the table `isWide`, and its map tells
/// where each unit lies. The padding behind the last unit repeats it.
class ColumnTable {
public:
    static constexpr int kGroup = 8;
    /// Rows are worked on in whole steps of this many bytes.
    static constexpr int kRowStep = 64;

    struct Group {
        alignas(16) std::uint8_t pick[16];  ///< byte of the first neighbour, each followed by "none"
        alignas(16) std::int16_t weight[8]; ///< share of the second neighbour in 1/2^15
    };

    static constexpr std::uint8_t kNone = 0x80;

    /// For rows of `units` units of `unitBytes` (1, 2 or 4) bytes. Allocates only when rows get longer.
    void prepare(const AxisMap& map, int units, int unitBytes);

    const AxisMap& map() const { return map_; }
    int units() const { return units_; }
    int unitBytes() const { return unitBytes_; }
    bool isWide() const { return isWide_; }
    int groupCount() const { return static_cast<int>(groups_.size()); }
    const Group* groups() const { return groups_.data(); }
    const std::int32_t* offsets() const { return offsets_.data(); }

private:
    AxisMap map_;
    int units_ = 0;
    int unitBytes_ = 1;
    bool isWide_ = false;
    std::vector<Group> groups_;
    std::vector<std::int32_t> offsets_; // of each group's first source byte in its row
};

} // namespace velmo::internal
