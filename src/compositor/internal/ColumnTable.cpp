#include "compositor/internal/ColumnTable.h"

#include <algorithm>
#include <iterator>

namespace velmo::internal {

void ColumnTable::prepare(const AxisMap& map, int units, int unitBytes) {
    if (map == map_ && units == units_ && unitBytes == unitBytes_) {
        return;
    }
    map_ = map;
    units_ = units;
    unitBytes_ = unitBytes;
    const int bytes = (units * unitBytes + kRowStep - 1) / kRowStep * kRowStep;
    groups_.resize(static_cast<std::size_t>(bytes / kGroup));
    offsets_.resize(groups_.size());
    isWide_ = false;
    const int unitsPerGroup = kGroup / unitBytes;
    const int farthest = static_cast<int>(std::size(Group{}.pick)) / unitBytes - 2; // with room for its neighbour
    for (int g = 0; g < groupCount(); ++g) {
        Group& group = groups_[static_cast<std::size_t>(g)];
        const int origin = map.at(std::min(g * unitsPerGroup, units - 1)).index;
        offsets_[static_cast<std::size_t>(g)] = origin * unitBytes;
        for (int u = 0; u < unitsPerGroup; ++u) {
            const AxisMap::Tap tap = map.at(std::min(g * unitsPerGroup + u, units - 1));
            isWide_ = isWide_ || tap.index - origin > farthest;
            for (int c = 0; c < unitBytes; ++c) {
                const int component = u * unitBytes + c;
                group.pick[2 * component] = static_cast<std::uint8_t>((tap.index - origin) * unitBytes + c);
                group.pick[2 * component + 1] = kNone;
                group.weight[component] = static_cast<std::int16_t>(tap.weight);
            }
        }
    }
}

} // namespace velmo::internal
