#pragma once

#include "platform/ffmpeg/FfmpegCameras.h"
#include "platform/synthetic/SyntheticCameras.h"

#include <QStringList>

#include <filesystem>
#include <optional>
#include <vector>

namespace velmo {

/// What the command line asks for. All of it is for demonstrations and tests; a user's choices are settings.
struct LaunchOptions {
    /// Cameras that need no hardware, beside the real ones.
    std::optional<SyntheticCameras::Options> syntheticCameras;
    /// Files and filter graphs that stand in for cameras.
    std::vector<FfmpegCameras::Source> cameraSources;
    /// Where the nodes of real cameras appear.
    std::filesystem::path cameraFolder = "/dev";

    /// `arguments` begin with the program's name. Ends the program on "--help", "--version" and what it does not know.
    static LaunchOptions parse(const QStringList& arguments);
};

} // namespace velmo
