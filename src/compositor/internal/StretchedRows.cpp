#include "compositor/internal/StretchedRows.h"

namespace velmo::internal {

void StretchedRows::prepare(const AxisMap& rows, const AxisMap& columns, int units, int unitBytes) {
    rows_ = rows;
    columns_.prepare(columns, units, unitBytes);
    for (KeptLine& kept : lines_) {
        kept.sourceRow = -1;
        kept.line.resize(count());
    }
}

} // namespace velmo::internal
