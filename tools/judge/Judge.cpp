// Tells what a finished video holds, as JSON on standard output, for tests that judge by the file alone:
//
//   velmo-judge FILE [--counter X,Y[,CELL]] [--white L] [--mark L] [--probe X,Y]... [--threshold A]
//
// streams with their codec data, one entry for each decoded frame (time, key frame, the burnt-in counter whose first
// cell begins at X,Y from the top left and is CELL (default 16) pixels wide, its white having the luma L (default 235),
// the mark, luma and chroma at each probe), and for each sound track the stretches in which it is louder than A
// (default 0.05), in seconds.
//
// The mark is all that is lighter than its L: told are the middle of that light, in pixels from the top left corner of
// the picture, and how many pixels are lit; null when none is.

#include "SoundEvents.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/pixdesc.h>
}

namespace {

constexpr int kBlack = 16;
constexpr int kBits = 24;

struct Counter {
    int x = 0;
    int y = 0;
    int cell = 16;
    int white = 235;
};

struct Options {
    std::string file;
    bool counts = false;
    Counter counter;
    std::optional<int> mark;
    std::vector<std::pair<int, int>> probes;
    double threshold = 0.05;
};

bool parse(int count, char** arguments, Options& options) {
    if (count < 2) {
        return false;
    }
    options.file = arguments[1];
    for (int i = 2; i + 1 < count; i += 2) {
        const std::string name = arguments[i];
        int x = 0;
        int y = 0;
        int cell = options.counter.cell;
        const int numbers = std::sscanf(arguments[i + 1], "%d,%d,%d", &x, &y, &cell);
        const bool isPoint = numbers >= 2;
        if (name == "--counter" && isPoint) {
            options.counts = true;
            options.counter.x = x;
            options.counter.y = y;
            options.counter.cell = cell;
        } else if (name == "--white" && numbers == 1) {
            options.counter.white = x;
        } else if (name == "--mark" && numbers == 1) {
            options.mark = x;
        } else if (name == "--probe" && isPoint) {
            options.probes.emplace_back(x, y);
        } else if (name == "--threshold") {
            options.threshold = std::atof(arguments[i + 1]);
        } else {
            return false;
        }
    }
    return count % 2 == 0;
}

int lumaAt(const AVFrame& frame, int x, int y) {
    return x < frame.width && y < frame.height ? frame.data[0][y * frame.linesize[0] + x] : -1;
}

int chromaAt(const AVFrame& frame, int plane, int x, int y) {
    return x < frame.width && y < frame.height ? frame.data[plane][y / 2 * frame.linesize[plane] + x / 2] : -1;
}

// -1 when the two cells that mark a counter are not there.
int readCounter(const AVFrame& frame, const Counter& counter) {
    const auto cell = [&](int index) {
        return lumaAt(frame, counter.x + index * counter.cell + counter.cell / 2, counter.y + counter.cell / 2);
    };
    const int range = counter.white - kBlack;
    if (cell(0) < kBlack + range * 3 / 4 || cell(1) > kBlack + range / 4) {
        return -1;
    }
    int value = 0;
    for (int bit = 0; bit < kBits; ++bit) {
        value = value << 1 | (cell(bit + 2) > kBlack + range / 2 ? 1 : 0);
    }
    return value;
}

void printMark(const AVFrame& frame, int ground) {
    double light = 0;
    double sumX = 0;
    double sumY = 0;
    int lit = 0;
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0];
        for (int x = 0; x < frame.width; ++x) {
            if (row[x] > ground) {
                const double weight = row[x] - ground;
                light += weight;
                sumX += weight * (x + 0.5);
                sumY += weight * (y + 0.5);
                ++lit;
            }
        }
    }
    if (lit == 0) {
        std::printf(", \"mark\": null");
    } else {
        std::printf(", \"mark\": [%.4f, %.4f, %d]", sumX / light, sumY / light, lit);
    }
}

const char* orUnknown(const char* text) {
    return text != nullptr ? text : "unknown";
}

double seconds(std::int64_t value, AVRational base) {
    return value == AV_NOPTS_VALUE ? -1 : static_cast<double>(value) * av_q2d(base);
}

class Judge {
public:
    explicit Judge(const Options& options) : options_(options) {}
    ~Judge() {
        for (Track& track : tracks_) {
            avcodec_free_context(&track.decoder);
        }
        avformat_close_input(&file_);
    }

    bool open() {
        if (avformat_open_input(&file_, options_.file.c_str(), nullptr, nullptr) < 0 ||
            avformat_find_stream_info(file_, nullptr) < 0) {
            return false;
        }
        for (unsigned i = 0; i < file_->nb_streams; ++i) {
            tracks_.emplace_back();
            Track& track = tracks_.back();
            track.stream = file_->streams[i];
            const AVCodec* codec = avcodec_find_decoder(track.stream->codecpar->codec_id);
            if (codec == nullptr) {
                return false;
            }
            track.decoder = avcodec_alloc_context3(codec);
            avcodec_parameters_to_context(track.decoder, track.stream->codecpar);
            track.decoder->pkt_timebase = track.stream->time_base;
            track.decoder->thread_count = 2;
            if (avcodec_open2(track.decoder, codec, nullptr) < 0) {
                return false;
            }
        }
        return true;
    }

    void report() {
        std::printf("{\"duration\": %.6f, \"streams\": [", static_cast<double>(file_->duration) / AV_TIME_BASE);
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            describe(*tracks_[i].stream, i == 0 ? "" : ", ");
        }
        std::printf("], \"frames\": [");
        decodeAll();
        std::printf("], \"decodeErrors\": %d, \"sounds\": [", errors_);
        const char* separator = "";
        for (Track& track : tracks_) {
            if (track.stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
                std::printf("%s", separator);
                track.events.finish();
                track.events.print();
                separator = ", ";
            }
        }
        std::printf("]}\n");
    }

private:
    struct Track {
        AVStream* stream = nullptr;
        AVCodecContext* decoder = nullptr;
        SoundEvents events;
    };

    void describe(const AVStream& stream, const char* separator) {
        const AVCodecParameters& codec = *stream.codecpar;
        std::printf("%s{\"type\": \"%s\", \"codec\": \"%s\", \"profile\": \"%s\", \"bitRate\": %lld, \"start\": %.6f, "
                    "\"duration\": %.6f, ",
                    separator, orUnknown(av_get_media_type_string(codec.codec_type)), avcodec_get_name(codec.codec_id),
                    orUnknown(avcodec_profile_name(codec.codec_id, codec.profile)),
                    static_cast<long long>(codec.bit_rate), seconds(stream.start_time, stream.time_base),
                    seconds(stream.duration, stream.time_base));
        if (codec.codec_type == AVMEDIA_TYPE_VIDEO) {
            std::printf(
                "\"width\": %d, \"height\": %d, \"reorder\": %d, \"primaries\": \"%s\", \"transfer\": \"%s\", "
                "\"matrix\": \"%s\", \"range\": \"%s\"}",
                codec.width, codec.height, codec.video_delay, orUnknown(av_color_primaries_name(codec.color_primaries)),
                orUnknown(av_color_transfer_name(codec.color_trc)), orUnknown(av_color_space_name(codec.color_space)),
                orUnknown(av_color_range_name(codec.color_range)));
        } else {
            std::printf("\"sampleRate\": %d, \"channels\": %d}", codec.sample_rate, codec.ch_layout.nb_channels);
        }
    }

    void decodeAll() {
        AVPacket* packet = av_packet_alloc();
        while (av_read_frame(file_, packet) >= 0) {
            decode(tracks_[static_cast<std::size_t>(packet->stream_index)], packet);
            av_packet_unref(packet);
        }
        av_packet_free(&packet);
        for (Track& track : tracks_) {
            decode(track, nullptr);
        }
    }

    void decode(Track& track, const AVPacket* packet) {
        if (avcodec_send_packet(track.decoder, packet) < 0) {
            errors_ += packet != nullptr ? 1 : 0;
            return;
        }
        AVFrame* frame = av_frame_alloc();
        while (avcodec_receive_frame(track.decoder, frame) >= 0) {
            if (track.stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
                printFrame(track, *frame);
            } else {
                track.events.hear(*frame, seconds(frame->pts, track.stream->time_base), options_.threshold);
            }
            errors_ += frame->decode_error_flags != 0 ? 1 : 0;
            av_frame_unref(frame);
        }
        av_frame_free(&frame);
    }

    void printFrame(const Track& track, const AVFrame& frame) {
        std::printf("%s{\"t\": %.6f, \"key\": %s", frames_++ == 0 ? "" : ",\n",
                    seconds(frame.best_effort_timestamp, track.stream->time_base),
                    frame.key_frame != 0 ? "true" : "false");
        if (options_.counts) {
            std::printf(", \"counter\": %d", readCounter(frame, options_.counter));
        }
        if (options_.mark) {
            printMark(frame, *options_.mark);
        }
        if (!options_.probes.empty()) {
            std::printf(", \"probes\": [");
            for (std::size_t i = 0; i < options_.probes.size(); ++i) {
                const auto [x, y] = options_.probes[i];
                std::printf("%s[%d, %d, %d]", i == 0 ? "" : ", ", lumaAt(frame, x, y), chromaAt(frame, 1, x, y),
                            chromaAt(frame, 2, x, y));
            }
            std::printf("]");
        }
        std::printf("}");
    }

    Options options_;
    AVFormatContext* file_ = nullptr;
    std::vector<Track> tracks_;
    int frames_ = 0;
    int errors_ = 0;
};

} // namespace

int main(int count, char** arguments) {
    Options options;
    if (!parse(count, arguments, options)) {
        std::fprintf(stderr, "usage: velmo-judge FILE [--counter X,Y[,CELL]] [--white L] [--mark L] [--probe X,Y]... "
                             "[--threshold A]\n");
        return 2;
    }
    av_log_set_level(AV_LOG_ERROR);
    Judge judge(options);
    if (!judge.open()) {
        std::fprintf(stderr, "velmo-judge: %s is no video\n", options.file.c_str());
        return 1;
    }
    judge.report();
    return 0;
}
