#pragma once

#include "media/PixelBuffer.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "platform/synthetic/internal/Scene.h"

#include <QImage>

#include <cstdint>
#include <memory>

namespace velmo::internal {

/// Makes the pictures of a synthetic camera. One thread.
class ScenePictures {
public:
    static constexpr double kFlashLength = 0.1; ///< s

    ScenePictures(std::unique_ptr<Scene> scene, SyntheticCameras::Options options);

    /// Picture `number`, as it is to be seen at `seconds` of the host clock. Null when memory is out.
    FrameRef make(std::int64_t number, double seconds);

private:
    void paintScene(const PixelBuffer& picture, double seconds);
    bool flashesAt(double seconds) const;

    std::unique_ptr<Scene> scene_;
    SyntheticCameras::Options options_;
    QImage stillPart_; // the moving part without movement
    QImage canvas_;    // of the whole picture, so that places need no shift
    FrameRef still_;
    std::unique_ptr<PixelBufferPool> pool_;
};

} // namespace velmo::internal
