#pragma once

#include "media/AssetWriter.h"
#include "platform/ffmpeg/FfmpegWriterOptions.h"

#include <functional>

namespace velmo::bench {

/// What encoding took: processor time of all threads, without what it takes to make the pictures.
struct EncoderCost {
    int frames = 0;
    double cpuPerFrame = 0;  ///< milliseconds
    double wallPerFrame = 0; ///< milliseconds
    double longest = 0;      ///< milliseconds of wall time, of one frame
    double bitRate = 0;      ///< bits a second, at the settings' frame rate
};

/// The settings that recordings are encoded with: 1080p and 30 a second give 9331200 bits a second.
VideoSettings recordingSettings(int width, int height, int framesPerSecond);

/// Sends pictures from `next` through the recorder's own encoder, with nothing around it, until there are none (null).
/// Pictures come at the settings' rate. Nothing else may run in the process meanwhile.
EncoderCost measureEncoder(const VideoSettings& settings, const FfmpegWriterOptions& options,
                           const std::function<FrameRef()>& next);

} // namespace velmo::bench
