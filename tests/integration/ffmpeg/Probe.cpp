#include "Probe.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace velmo::test {

namespace {

std::vector<Entry> entries(const std::string& arguments, const std::filesystem::path& file) {
    std::istringstream lines(run("ffprobe -v error " + arguments + " -of compact=p=0 " + quoted(file) + " 2>&1"));
    std::vector<Entry> result;
    for (std::string line; std::getline(lines, line);) {
        Entry entry;
        std::istringstream fields(line);
        for (std::string field; std::getline(fields, field, '|');) {
            const std::size_t equals = field.find('=');
            entry[field.substr(0, equals)] = equals == std::string::npos ? "" : field.substr(equals + 1);
        }
        if (!entry.empty()) {
            result.push_back(std::move(entry));
        }
    }
    return result;
}

} // namespace

std::string run(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        ADD_FAILURE() << command;
        return output;
    }
    std::array<char, 65536> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        output.append(buffer.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output.substr(0, 2000);
    return output;
}

std::string quoted(const std::filesystem::path& file) {
    return "'" + file.string() + "'";
}

std::vector<Entry> streams(const std::filesystem::path& file) {
    return entries("-show_streams", file);
}

std::vector<Entry> packets(const std::filesystem::path& file, const std::string& stream) {
    return entries("-select_streams " + stream + " -show_packets -show_data_hash MD5", file);
}

Entry format(const std::filesystem::path& file) {
    const auto found = entries("-show_format", file);
    return found.empty() ? Entry{} : found.front();
}

GreyPictures decodePictures(const std::filesystem::path& file) {
    const Entry video = streams(file).front();
    GreyPictures pictures{std::stoi(video.at("width")), std::stoi(video.at("height")), {}};
    const std::string bytes =
        run("ffmpeg -v error -i " + quoted(file) + " -map 0:v:0 -vsync passthrough -pix_fmt gray -f rawvideo -");
    pictures.bytes.assign(bytes.begin(), bytes.end());
    return pictures;
}

std::vector<float> decodeSound(const std::filesystem::path& file, int track) {
    const std::string bytes = run("ffmpeg -v error -i " + quoted(file) + " -map 0:a:" + std::to_string(track) +
                                  " -af aresample=async=1:first_pts=0,pan=mono\\|c0=c0 -ar 48000 -f f32le -");
    std::vector<float> sound(bytes.size() / sizeof(float));
    std::memcpy(sound.data(), bytes.data(), sound.size() * sizeof(float));
    return sound;
}

std::string complaints(const std::filesystem::path& file) {
    return run("ffmpeg -v warning -i " + quoted(file) + " -f null - 2>&1");
}

std::vector<double> onsets(const std::vector<float>& sound, float threshold) {
    constexpr double kRate = 48000;
    std::vector<double> found;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double time = static_cast<double>(i) / kRate;
        if (std::abs(sound[i]) > threshold && (found.empty() || time - found.back() > 0.2)) {
            found.push_back(time);
        }
    }
    return found;
}

} // namespace velmo::test
