#pragma once

#include "media/AssetInspector.h"

#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// Knows videos by file name. Writes down what it was asked for, as "name@seconds" and "name".
class FakeAssetInspector final : public AssetInspector {
public:
    struct Video {
        double duration = 0;
        double lastPicture = 0; ///< seconds; asking later fails, below 0 there is no picture at all
    };

    Result<double> duration(const std::filesystem::path& file) const override {
        durationsAsked.push_back(file.filename().native());
        const auto video = videos.find(file.filename().native());
        return video == videos.end() ? Result<double>(noVideo()) : Result<double>(video->second.duration);
    }

    Result<FrameRef> image(const std::filesystem::path& file, double seconds, int maximumSide) const override {
        imagesAsked.push_back(file.filename().native() + "@" + std::to_string(seconds).substr(0, 3));
        sideAsked = maximumSide;
        const auto video = videos.find(file.filename().native());
        if (video == videos.end() || seconds > video->second.lastPicture) {
            return noVideo();
        }
        return PixelBuffer::create(PixelFormat::bgra, 16, 9);
    }

    std::map<std::string, Video> videos;
    mutable std::vector<std::string> durationsAsked;
    mutable std::vector<std::string> imagesAsked;
    mutable int sideAsked = 0;

private:
    static Error noVideo() { return {"test", 1, "no video"}; }
};

} // namespace velmo::test
