#pragma once

#include "base/Geometry.h"
#include "base/Result.h"
#include "capture/internal/RecordingTimeline.h"
#include "media/AssetWriter.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace velmo::internal {

/// A writer that has started writing, and its tracks.
struct WriterSetup {
    std::unique_ptr<AssetWriter> writer;
    RecordingTimeline::Inputs inputs;
};

/// What is to be in the file. `size` in pixels.
struct WriterRequest {
    std::filesystem::path path;
    Size size;
    int fps = 30;
    bool wantsSystemSound = false;
    bool wantsMicrophone = false;
};

/// Bits a second: 0.15 for each pixel of each frame, at least 6 million.
VideoSettings videoSettings(Size size, int fps);

/// Replaces a file at the path. A refused sound track is left out; a refused picture is an error.
/// `interrupted` goes to the writer as it is.
Result<WriterSetup> setUpWriter(AssetWriterFactory& writers, const WriterRequest& request,
                                std::function<void(const Error&)> interrupted);

} // namespace velmo::internal
