#include "app/ClassKitAdapter.h"

#include <utility>

namespace velmo {

ClassKitAdapter::ClassKitAdapter(const ClassKit& kit, std::unique_ptr<SerialQueue> queue)
    : kit_(kit), queue_(std::move(queue)) {}

void ClassKitAdapter::writeFolder(std::filesystem::path video, std::vector<KitItem> items,
                                  std::vector<Chapter> chapters, bool copyFiles, std::function<void()> done) {
    queue_->async([video = std::move(video), items = std::move(items), chapters = std::move(chapters), copyFiles,
                   done = std::move(done)] {
        ClassKit::writeFolder(video, items, chapters, copyFiles);
        done();
    });
}

} // namespace velmo
