#include "platform/ffmpeg/internal/EncoderLoad.h"

#include <algorithm>

namespace velmo::internal {

namespace {

constexpr int kAveragedFrames = 8;
constexpr int kLeastFrames = 3;         // measured before anything is said, so that one key frame cannot decide
constexpr double kLongestCounted = 3.0; // intervals; a hiccup of the machine counts no more than a slow picture

} // namespace

EncoderLoad::EncoderLoad(double frameInterval, int queueLimit)
    : frameInterval_(frameInterval), highWater_(queueLimit / 2) {}

bool EncoderLoad::isTooHigh(double encodingTime, int waiting) {
    ++frames_;
    const double counted = std::min(encodingTime, kLongestCounted * frameInterval_);
    average_ += (counted - average_) / std::min(frames_, kAveragedFrames);
    if (frames_ < kLeastFrames || waiting < highWater_ || average_ < frameInterval_) {
        return false;
    }
    frames_ = 0; // the next frame's time replaces the average
    return true;
}

} // namespace velmo::internal
