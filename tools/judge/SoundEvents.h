#pragma once

#include <utility>
#include <vector>

struct AVFrame;

/// The stretches in which a sound track is louder than a threshold. Pauses below 20 ms do not end one.
class SoundEvents {
public:
    /// `start` is the time of the frame's first sample in seconds; samples are planar or packed float.
    void hear(const AVFrame& frame, double start, double threshold);
    void finish();
    /// As a JSON list of [begin, end] in seconds.
    void print() const;

private:
    std::vector<std::pair<double, double>> events_;
    bool open_ = false;
    double begin_ = 0;
    double lastLoud_ = 0;
};
