#pragma once

#include "compositor/internal/AxisMap.h"
#include "compositor/internal/ColumnTable.h"

#include <array>
#include <cstdint>
#include <vector>

namespace velmo::internal {

/// One component per 16 bits with 7 bits of fraction, in whole aligned blocks.
class Line {
public:
    /// Allocates only to grow. A multiple of `ColumnTable::kRowStep` components.
    void resize(int components) { blocks_.resize(static_cast<std::size_t>(components / kPerBlock)); }
    std::int16_t* data() { return blocks_.front().components; }

private:
    static constexpr int kPerBlock = ColumnTable::kRowStep / 2;
    struct alignas(ColumnTable::kRowStep) Block {
        std::int16_t components[kPerBlock];
    };
    std::vector<Block> blocks_;
};

/// A plane in the making at another size. Each source row is stretched sideways once, into a line that is kept while
/// output rows lie beside it; an output row is then a blend of two lines.
class StretchedRows {
public:
    /// The lines on either side of an output row, and the share of the lower in 1/2^15. Valid until the next call.
    struct Pair {
        const std::int16_t* upper;
        const std::int16_t* lower;
        int weight;
    };

    /// Forgets all lines. Output rows have `units` units of `unitBytes`. Allocates only when rows get longer.
    void prepare(const AxisMap& rows, const AxisMap& columns, int units, int unitBytes);

    const ColumnTable& columns() const { return columns_; }
    /// Components of a line: a multiple of `ColumnTable::kRowStep`, at least those of an output row.
    int count() const { return columns_.groupCount() * ColumnTable::kGroup; }

    /// For output row `y`; rows are best asked for in order. `stretch(sourceRow, line)` makes a line that is not there.
    template <typename Stretch>
    Pair at(int y, Stretch&& stretch) {
        const AxisMap::Tap tap = rows_.at(y);
        const int next = tap.weight > 0 ? tap.index + 1 : tap.index;
        const std::int16_t* upper = line(tap.index, next, stretch);
        return {upper, line(next, tap.index, stretch), tap.weight};
    }

private:
    struct KeptLine {
        int sourceRow = -1;
        Line line;
    };

    template <typename Stretch>
    const std::int16_t* line(int sourceRow, int rowToKeep, Stretch&& stretch) {
        for (KeptLine& kept : lines_) {
            if (kept.sourceRow == sourceRow) {
                return kept.line.data();
            }
        }
        KeptLine& replaced = lines_[0].sourceRow == rowToKeep ? lines_[1] : lines_[0];
        replaced.sourceRow = sourceRow;
        stretch(sourceRow, replaced.line.data());
        return replaced.line.data();
    }

    AxisMap rows_;
    ColumnTable columns_;
    std::array<KeptLine, 2> lines_;
};

} // namespace velmo::internal
