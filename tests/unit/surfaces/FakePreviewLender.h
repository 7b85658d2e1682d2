#pragma once

#include "surfaces/CameraPreview.h"
#include "surfaces/PreviewLender.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo::test {

/// A bubble of which only the place and the loan are real.
struct FakePreviewLender final : PreviewLender {
    std::optional<BubbleInfo> captureInfo() const override { return covered ? std::nullopt : info; }
    std::optional<BubbleInfo> captureInfoIgnoringCover() const override { return info; }
    CameraPreview& lendPreview() override {
        calls.push_back("lend");
        lent = true;
        return preview;
    }
    void takeBackPreview() override {
        calls.push_back("take back");
        lent = false;
    }
    void setCoveredByPresenter(bool now) override {
        calls.push_back(now ? "cover" : "uncover");
        covered = now;
    }
    void put(const Rect& rect) {
        info.emplace();
        info->rect = rect;
        info->circle = true;
    }

    CameraFeed feed;
    CameraPreview preview{feed};
    std::optional<BubbleInfo> info; ///< absent: closed
    bool lent = false;
    bool covered = false;
    std::vector<std::string> calls;
};

} // namespace velmo::test
