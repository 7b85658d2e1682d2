#pragma once

#include "platform/ffmpeg/internal/Handles.h"

#include <functional>
#include <memory>

namespace velmo::internal {

/// Decodes what a camera sends and leaves out pictures that came damaged. One thread.
///
/// It is strict at first, so that half a picture is never seen; a camera none of whose pictures is as the book says
/// is taken as it is.
class CameraDecoder {
public:
    /// Null when there is no decoder for the track.
    static std::unique_ptr<CameraDecoder> create(const AVStream& stream);

    /// `take` gets each whole picture, for the length of the call. A null packet: the end, what is held comes out.
    void decode(const AVPacket* packet, const std::function<void(const AVFrame&)>& take);

private:
    static constexpr int kLenientAfter = 30; // damaged packets in a row without one good picture ever

    explicit CameraDecoder(const AVStream& stream) : stream_(stream) {}
    bool open(bool strict);
    void noteDamage();

    const AVStream& stream_;
    CodecContext codec_;
    FramePtr frame_;
    bool strict_ = true;
    bool everGood_ = false;
    int damaged_ = 0; // in a row
};

} // namespace velmo::internal
