#pragma once

#include "base/SerialQueue.h"
#include "classkit/ClassKit.h"
#include "session/SessionServices.h"

#include <memory>

namespace velmo {

/// The class kit as a session sees it. Class folders are written on a queue of their own, one after the other. Main
/// thread; the destructor waits for the folders that were handed over.
class ClassKitAdapter final : public ClassMaterial {
public:
    /// `kit` is borrowed.
    ClassKitAdapter(const ClassKit& kit, std::unique_ptr<SerialQueue> queue);

    std::vector<KitItem> items() const override { return kit_.items(); }
    bool copyFiles() const override { return kit_.copyFiles(); }
    void writeFolder(std::filesystem::path video, std::vector<KitItem> items, std::vector<Chapter> chapters,
                     bool copyFiles, std::function<void()> done) override;

private:
    const ClassKit& kit_;
    std::unique_ptr<SerialQueue> queue_;
};

} // namespace velmo
