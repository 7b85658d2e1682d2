#include "app/RecordingKeys.h"

namespace velmo {
namespace {

struct Row {
    std::uint32_t id;
    int key;
    void (RecorderController::*action)();
};

constexpr Row kRows[] = {
    {2, 35, &RecorderController::togglePause},     // ⌃P
    {3, 46, &RecorderController::addMarker},       // ⌃M
    {4, 2, &RecorderController::toggleDrawing},    // ⌃D
    {5, 11, &RecorderController::toggleBoard},     // ⌃B
    {6, 6, &RecorderController::toggleZoom},       // ⌃Z
    {7, 15, &RecorderController::toggleRegion},    // ⌃R
    {8, 24, &RecorderController::zoomIn},          // ⌃=
    {9, 27, &RecorderController::zoomOutStep},     // ⌃-
    {10, 0, &RecorderController::zoomToArea},      // ⌃A
    {11, 3, &RecorderController::toggleSpotlight}, // ⌃F
    {12, 8, &RecorderController::togglePresenter}, // ⌃C
    {13, 40, &RecorderController::toggleKit},      // ⌃K
    {14, 17, &RecorderController::prompterKey},    // ⌃T
};

constexpr std::uint32_t kFirstSceneID = 20;
constexpr int kSceneKeys[] = {18, 19, 20, 21}; // ⌃1 to ⌃4

} // namespace

std::vector<HotKeys::RecordingKey> recordingKeys(RecorderController& recorder) {
    std::vector<HotKeys::RecordingKey> keys;
    for (const Row& row : kRows) {
        keys.push_back({row.id, row.key, [&recorder, action = row.action] { (recorder.*action)(); }});
    }
    for (int index = 0; index < 4; ++index) {
        keys.push_back({kFirstSceneID + static_cast<std::uint32_t>(index), kSceneKeys[index], [&recorder, index] {
                            if (const auto scene = sceneFromRaw(index + 1)) {
                                recorder.setScene(*scene);
                            }
                        }});
    }
    return keys;
}

} // namespace velmo
