#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// What another program says about a file: the tests judge by `ffprobe` and `ffmpeg`, not by the code under test.
/// A command that fails or complains fails the test.

using Entry = std::map<std::string, std::string>;

/// Streams in order.
std::vector<Entry> streams(const std::filesystem::path& file);
/// Packets of a stream ("v:0", "a:1") in order, with pts_time, duration_time, flags, size and data_hash.
std::vector<Entry> packets(const std::filesystem::path& file, const std::string& stream);
/// The format's own entry.
Entry format(const std::filesystem::path& file);

struct GreyPictures {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
    std::size_t count() const { return bytes.size() / static_cast<std::size_t>(width * height); }
    const std::uint8_t* at(std::size_t index) const {
        return bytes.data() + index * static_cast<std::size_t>(width * height);
    }
};
/// All pictures, each once.
GreyPictures decodePictures(const std::filesystem::path& file);
/// One audio track as mono at 48 kHz, beginning at the file's zero.
std::vector<float> decodeSound(const std::filesystem::path& file, int track);
/// Decodes everything and returns what the decoder complained about.
std::string complaints(const std::filesystem::path& file);

/// Where sound rises from silence to a beep, in seconds.
std::vector<double> onsets(const std::vector<float>& sound, float threshold = 0.15F);

/// Runs a command of another program and returns what it printed.
std::string run(const std::string& command);
std::string quoted(const std::filesystem::path& file);

} // namespace velmo::test
