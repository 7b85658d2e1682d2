#include "app/composition/Platform.h"

#include "app/LaunchOptions.h"
#include "capture/DiagLog.h"

#include <QCoreApplication>

#include <syslog.h>

#include <vector>

namespace velmo {

Composition::Platform::Platform(const LaunchOptions& options)
    : devices(clock, options.cameraSources, options.cameraFolder),
      syntheticCameras(clock, options.syntheticCameras.value_or(SyntheticCameras::Options{})),
      cameras(options.syntheticCameras ? std::vector<CameraService*>{&devices, &syntheticCameras}
                                       : std::vector<CameraService*>{&devices}) {}

AudioMixer Composition::Platform::makeMixer() const {
    return AudioMixer(readers, passthroughWriters,
                      [](const std::string& line) { ::syslog(LOG_WARNING, "%s", line.c_str()); });
}

std::function<void(std::function<void(bool)>)> Composition::Platform::askForCamera() {
    if (!CameraPortal::isInUse()) {
        return {};
    }
    return [this](std::function<void(bool)> answered) { cameraPortal.request(std::move(answered)); };
}

void Composition::Platform::log(const std::string& line) {
    DiagLog::write(line);
}

int Composition::Platform::ownProcess() {
    return static_cast<int>(QCoreApplication::applicationPid());
}

FfmpegWriterOptions Composition::Platform::writerOptions() {
    FfmpegWriterOptions options;
    options.log = &log;
    options.keepsJournal = true; // the library takes it away
    return options;
}

} // namespace velmo
