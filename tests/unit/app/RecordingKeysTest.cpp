#include "app/RecordingKeys.h"

#include <gmock/gmock.h>

#include <utility>

namespace velmo {
namespace {

TEST(RecordingKeys, AreSeventeenByIdAndPlaceInTheirOrder) {
    alignas(RecorderController) static std::byte nobody[sizeof(RecorderController)]; // only its address is taken
    const auto keys = recordingKeys(*reinterpret_cast<RecorderController*>(nobody));
    std::vector<std::pair<std::uint32_t, int>> table;
    for (const HotKeys::RecordingKey& key : keys) {
        table.emplace_back(key.id, key.key);
        EXPECT_TRUE(key.action);
    }
    const std::vector<std::pair<std::uint32_t, int>> expected{{2, 35},  {3, 46},  {4, 2},   {5, 11},  {6, 6},  {7, 15},
                                                              {8, 24},  {9, 27},  {10, 0},  {11, 3},  {12, 8}, {13, 40},
                                                              {14, 17}, {20, 18}, {21, 19}, {22, 20}, {23, 21}};
    EXPECT_EQ(table, expected);
}

TEST(RecordingKeys, TheKeyThatIsAlwaysThereIsControlG) {
    EXPECT_EQ(kToggleKeyID, 1U);
    EXPECT_EQ(kToggleKeyCode, 5);
}

} // namespace
} // namespace velmo
