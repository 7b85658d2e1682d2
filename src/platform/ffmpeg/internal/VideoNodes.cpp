#include "platform/ffmpeg/internal/VideoNodes.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <system_error>
#include <utility>

namespace velmo::internal {

namespace {

namespace fs = std::filesystem;

/// The number of "video12"; absent for other names.
std::optional<int> nodeNumber(const std::string& name) {
    constexpr std::string_view kName = "video";
    int number = 0;
    const char* const end = name.data() + name.size();
    if (!name.starts_with(kName)) {
        return std::nullopt;
    }
    const auto read = std::from_chars(name.data() + kName.size(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

std::map<int, fs::path> numberedNodes(const fs::path& folder) {
    std::map<int, fs::path> nodes;
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(folder, failure)) {
        if (const auto number = nodeNumber(entry.path().filename().string())) {
            nodes.emplace(*number, entry.path());
        }
    }
    return nodes;
}

/// Node name -> the name that the system gives to the device itself.
std::map<std::string, std::string> lastingNames(const fs::path& folder) {
    std::map<std::string, std::string> names;
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(folder / "v4l" / "by-id", failure)) {
        const fs::path target = fs::read_symlink(entry.path(), failure);
        if (failure) {
            continue;
        }
        std::string& name = names[target.filename().string()];
        const std::string link = entry.path().filename().string();
        if (name.empty() || link < name) {
            name = link;
        }
    }
    return names;
}

} // namespace

std::vector<VideoNode> findVideoNodes(const fs::path& folder, const NodeProbe& probe) {
    const auto lasting = lastingNames(folder);
    std::vector<VideoNode> found;
    std::map<std::string, int> uses;
    for (const auto& [number, path] : numberedNodes(folder)) {
        const std::optional<NodeFacts> facts = probe(path);
        const std::optional<CameraMode> mode = facts ? bestMode(facts->modes) : std::nullopt;
        if (!mode) {
            continue;
        }
        const auto name = lasting.find(path.filename().string());
        std::string id = "v4l2:" + (name != lasting.end() ? name->second : facts->bus + ":" + facts->card);
        if (const int before = uses[id]++; before > 0) {
            id += ":" + std::to_string(before + 1);
        }
        found.push_back({{std::move(id), facts->card}, path, *mode});
    }
    return found;
}

} // namespace velmo::internal
