#include "platform/ffmpeg/internal/CameraDecoder.h"

#include "platform/ffmpeg/internal/Errors.h"
#include "support/JpegPictures.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace velmo::internal {
namespace {

class CameraDecoderTest : public testing::Test {
protected:
    CameraDecoderTest() {
        silenceLibraries();
        format_.reset(avformat_alloc_context());
        AVStream* stream = avformat_new_stream(format_.get(), nullptr);
        stream->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
        stream->codecpar->codec_id = AV_CODEC_ID_MJPEG;
        stream->time_base = {1, 1'000'000};
        decoder = CameraDecoder::create(*stream);
    }

    void send(const test::Bytes& bytes) {
        const PacketPtr packet(av_packet_alloc());
        av_new_packet(packet.get(), static_cast<int>(bytes.size()));
        std::copy(bytes.begin(), bytes.end(), packet->data);
        decoder->decode(packet.get(), [this](const AVFrame& frame) { levels.push_back(frame.data[0][0]); });
    }

    std::unique_ptr<CameraDecoder> decoder;
    std::vector<int> levels; ///< of the pictures that came out

private:
    struct FreedFormat {
        void operator()(AVFormatContext* format) const { avformat_free_context(format); }
    };
    std::unique_ptr<AVFormatContext, FreedFormat> format_;
};

TEST_F(CameraDecoderTest, DamagedPicturesAreLeftOutAndTheNextGoodOneIsSeen) {
    const test::Bytes good = test::jpegPicture(320, 240, 100);
    send(good);
    send(test::firstPart(good, 0.5));
    send(test::firstPart(good, 0.02));
    send(test::Bytes(5000, 0x5a));
    send({});
    send(test::jpegPicture(320, 240, 180));
    EXPECT_THAT(levels, ElementsAre(100, 180));
}

TEST_F(CameraDecoderTest, DamageInTheMiddleIsFoundToo) {
    test::Bytes broken = test::jpegPicture(320, 240, 100);
    std::fill(broken.begin() + static_cast<std::ptrdiff_t>(broken.size() / 2),
              broken.begin() + static_cast<std::ptrdiff_t>(broken.size() / 2 + 400), 0xff);
    send(broken);
    EXPECT_THAT(levels, IsEmpty());
}

TEST_F(CameraDecoderTest, ACameraThatNeverSendsAWholePictureIsTakenAsItIs) {
    const test::Bytes cut = test::firstPart(test::jpegPicture(320, 240, 100), 0.95);
    for (int i = 0; i < 29; ++i) {
        send(cut);
    }
    EXPECT_THAT(levels, IsEmpty());
    for (int i = 0; i < 5; ++i) {
        send(cut);
    }
    EXPECT_THAT(levels, testing::SizeIs(testing::Ge(3)));
}

TEST_F(CameraDecoderTest, AGoodCameraIsNeverTakenLeniently) {
    const test::Bytes good = test::jpegPicture(320, 240, 100);
    send(good);
    for (int i = 0; i < 100; ++i) {
        send(test::firstPart(good, 0.6));
    }
    EXPECT_THAT(levels, ElementsAre(100));
}

TEST_F(CameraDecoderTest, PicturesMayChangeTheirSize) {
    send(test::jpegPicture(320, 240, 60));
    send(test::jpegPicture(640, 480, 90));
    EXPECT_THAT(levels, ElementsAre(60, 90));
}

} // namespace
} // namespace velmo::internal
