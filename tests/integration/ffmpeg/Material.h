#pragma once

#include "media/AssetWriter.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// A grey picture that carries `number` (16 bits) as black and white squares along its top.
FrameRef numberedPicture(int width, int height, unsigned number);
/// Every pixel by chance, different for each seed: the hardest there is to encode.
FrameRef noisyPicture(int width, int height, unsigned seed);
/// The number in a decoded picture, from its grey values.
unsigned numberIn(const std::uint8_t* grey, int width, int height);

Sample pictureSample(FrameRef picture, MediaTime time, MediaTime duration = MediaTime::invalid());

/// 48 kHz stereo: a tone of 20 ms at each of `beeps` (seconds on the host clock), nothing in between. The device's
/// clock is off by `ppm`, its buffers of 20 ms carry the true time.
class BeepingSource {
public:
    BeepingSource(double begin, std::vector<double> beeps, double frequency = 1000, double ppm = 0,
                  float amplitude = 0.5F);
    /// The time of the next buffer.
    double time() const { return time_; }
    Sample next();
    /// The device records nothing for so long.
    void stall(double seconds) { time_ += seconds; }

private:
    double time_;
    double rate_;
    std::vector<double> beeps_;
    double frequency_;
    float amplitude_;
};

/// Waits until the input takes the sample; false when that never comes.
bool appendWhenReady(AssetWriterInput& input, const Sample& sample);
/// Finishes and waits for the completion.
void finish(AssetWriter& writer);

/// A small recording: `seconds` of numbered 320x180 pictures at 30 a second, and a track of beeps for each list.
void writeRecording(const std::filesystem::path& path, double seconds,
                    const std::vector<std::vector<double>>& beepsOfTracks, float amplitude = 0.5F);

} // namespace velmo::test
