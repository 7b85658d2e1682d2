#pragma once

#include "compositor/BubbleInfo.h"

#include <optional>

namespace velmo {

class CameraPreview;

/// The camera bubble as the presenter sees it: where it stands, and its picture on loan. Main thread.
class PreviewLender {
public:
    virtual ~PreviewLender() = default;
    /// As it stands on the screen now; absent while hidden or covered.
    virtual std::optional<BubbleInfo> captureInfo() const = 0;
    /// The same, but also while covered; absent once the bubble is hidden.
    virtual std::optional<BubbleInfo> captureInfoIgnoringCover() const = 0;
    /// The bubble stops painting its picture until it has it back. The preview stays the lender's, which outlives the
    /// loan, also when the bubble is closed meanwhile.
    virtual CameraPreview& lendPreview() = 0;
    /// Nothing happens without a loan.
    virtual void takeBackPreview() = 0;
    /// A bubble under the presenter's stage lives on, unseen.
    virtual void setCoveredByPresenter(bool covered) = 0;
};

} // namespace velmo
