#pragma once

#include "capture/internal/RecordingTimeline.h"
#include "support/FakeAssetWriter.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmo::test {

/// Gives the timeline a started writer of all three tracks.
inline void arm(internal::RecordingTimeline& timeline, FakeAssetWriterFactory& writers) {
    auto writer = writers.makeWriter("/nowhere/video.mp4");
    internal::RecordingTimeline::Inputs inputs;
    inputs.video = writer.value()->addVideoInput({});
    inputs.system = writer.value()->addAudioInput({});
    inputs.microphone = writer.value()->addAudioInput({});
    EXPECT_TRUE(writer.value()->startWriting().ok());
    timeline.arm(std::move(writer).value(), inputs);
}

} // namespace velmo::test
