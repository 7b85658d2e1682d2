#pragma once

#include "compositor/internal/ColumnTable.h"

#include <cstdint>

/// The inner loops of every scaling, in the widest vectors of the machine that runs them. Integers only, with the
/// same result on every machine. A line holds one component per 16 bits, with 7 bits of fraction.
namespace velmo::internal {

/// Stretches one source row into a line of 8 * `table.groupCount()` components. Reads up to 16 bytes past the
/// row's last unit, without using them.
void stretchRow(const std::uint8_t* source, const ColumnTable& table, std::int16_t* line);

/// Blends two lines into a row: `weight` / 2^15 of the lower. `count` components, a multiple of
/// `ColumnTable::kRowStep`.
void blendLines(const std::int16_t* upper, const std::int16_t* lower, int weight, std::uint8_t* row, int count);

/// The same, kept as a line.
void blendToLine(const std::int16_t* upper, const std::int16_t* lower, int weight, std::int16_t* blended, int count);

} // namespace velmo::internal
