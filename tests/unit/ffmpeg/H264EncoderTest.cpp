#include "platform/ffmpeg/internal/H264Encoder.h"

#include "platform/ffmpeg/internal/Errors.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace velmo::internal {
namespace {

const bool kQuiet = (silenceLibraries(), true);

FrameRef grey(int width, int height) {
    FrameRef picture = PixelBuffer::create(PixelFormat::nv12, width, height);
    for (int index = 0; index < 2; ++index) {
        const PlaneView plane = picture->plane(index);
        for (int y = 0; y < plane.height; ++y) {
            std::memset(plane.row(y), 128, static_cast<std::size_t>(plane.stride));
        }
    }
    return picture;
}

std::string headers(const VideoSettings& settings, EncoderPreset preset) {
    const auto encoder = H264Encoder::open(settings, preset, 2);
    EXPECT_TRUE(encoder && kQuiet);
    const AVCodecContext& context = encoder.value()->context();
    return {reinterpret_cast<const char*>(context.extradata), static_cast<std::size_t>(context.extradata_size)};
}

TEST(H264Encoder, AllPresetsWriteTheSameHeadersOfHighProfile) {
    for (const VideoSettings& settings :
         {VideoSettings{320, 180, 6'000'000, 30, 60}, VideoSettings{1920, 1080, 9'331'200, 30, 60},
          VideoSettings{3840, 2160, 74'649'600, 60, 120}}) {
        const std::string first = headers(settings, EncoderPreset::veryfast);
        constexpr std::size_t kProfile = 5; // start code, unit type, profile
        ASSERT_GT(first.size(), kProfile);
        EXPECT_EQ(first[kProfile], 100);
        EXPECT_EQ(headers(settings, EncoderPreset::superfast), first);
        EXPECT_EQ(headers(settings, EncoderPreset::ultrafast), first);
    }
}

TEST(H264Encoder, EveryPictureComesOutAtOnce) {
    for (const EncoderPreset preset : {EncoderPreset::veryfast, EncoderPreset::superfast, EncoderPreset::ultrafast}) {
        const auto encoder = H264Encoder::open({320, 180, 6'000'000, 30, 60}, preset, 2);
        ASSERT_TRUE(encoder);
        for (int i = 0; i < 10; ++i) {
            const PacketPtr packet = encoder.value()->encode(grey(320, 180), i * 3000, 1234, H264Encoder::Frame::free);
            ASSERT_NE(packet, nullptr);
            EXPECT_EQ(packet->pts, i * 3000);
            EXPECT_EQ(packet->dts, i * 3000);
            EXPECT_EQ(packet->duration, 1234);
            EXPECT_EQ((packet->flags & AV_PKT_FLAG_KEY) != 0, i == 0);
        }
        EXPECT_EQ(encoder.value()->drain(), nullptr);
    }
}

TEST(H264Encoder, AKeyFrameComesWhenItIsAskedFor) {
    const auto encoder = H264Encoder::open({320, 180, 6'000'000, 30, 60}, EncoderPreset::veryfast, 2);
    ASSERT_TRUE(encoder);
    for (int i = 0; i < 10; ++i) {
        const auto kind = i == 5 ? H264Encoder::Frame::key : H264Encoder::Frame::free;
        const PacketPtr packet = encoder.value()->encode(grey(320, 180), i * 3000, 3000, kind);
        ASSERT_NE(packet, nullptr);
        EXPECT_EQ((packet->flags & AV_PKT_FLAG_KEY) != 0, i == 0 || i == 5);
    }
}

TEST(H264Encoder, LetsGoOfAPictureOnceItIsEncoded) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 320, 180, 1);
    const auto encoder = H264Encoder::open({320, 180, 6'000'000, 30, 60}, EncoderPreset::veryfast, 2);
    ASSERT_TRUE(encoder);
    const PixelBuffer* first = nullptr;
    for (int i = 0; i < 5; ++i) {
        FrameRef picture = pool->take();
        first = first == nullptr ? picture.get() : first;
        EXPECT_EQ(picture.get(), first) << "the only buffer is back in its pool";
        ASSERT_NE(encoder.value()->encode(std::move(picture), i * 3000, 3000, H264Encoder::Frame::free), nullptr);
    }
}

} // namespace
} // namespace velmo::internal
