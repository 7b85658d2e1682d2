#include "capture/internal/WriterSetup.h"

#include "capture/RecorderError.h"

#include <algorithm>
#include <system_error>

namespace velmo::internal {

namespace {

constexpr double kBitsPerPixel = 0.15;
constexpr int kLowestBitRate = 6'000'000;
constexpr int kKeyFrameSeconds = 2;

} // namespace

VideoSettings videoSettings(Size size, int fps) {
    VideoSettings settings;
    settings.width = static_cast<int>(size.width);
    settings.height = static_cast<int>(size.height);
    settings.averageBitRate =
        std::max(static_cast<int>(size.width * size.height * fps * kBitsPerPixel), kLowestBitRate);
    settings.expectedSourceFrameRate = fps;
    settings.maxKeyFrameInterval = kKeyFrameSeconds * fps;
    return settings;
}

Result<WriterSetup> setUpWriter(AssetWriterFactory& writers, const WriterRequest& request,
                                std::function<void(const Error&)> interrupted) {
    std::error_code ignored;
    std::filesystem::remove(request.path, ignored);
    auto made = writers.makeWriter(request.path);
    if (!made) {
        return made.error();
    }
    WriterSetup setup;
    setup.writer = std::move(made).value();
    setup.inputs.video = setup.writer->addVideoInput(videoSettings(request.size, request.fps));
    if (setup.inputs.video == nullptr) {
        return RecorderError::writer("Formato de video no admitido.");
    }
    if (request.wantsSystemSound) {
        setup.inputs.system = setup.writer->addAudioInput(AudioSettings{});
    }
    if (request.wantsMicrophone) {
        setup.inputs.microphone = setup.writer->addAudioInput(AudioSettings{});
    }
    setup.writer->setOnInterruption(std::move(interrupted));
    if (const auto started = setup.writer->startWriting(); !started) {
        setup.writer->cancelWriting();
        return RecorderError::writer(started.error().text);
    }
    return setup;
}

} // namespace velmo::internal
