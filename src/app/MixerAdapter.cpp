#include "app/MixerAdapter.h"

#include <utility>

namespace velmo {

MixerAdapter::MixerAdapter(AudioMixer mixer, std::unique_ptr<SerialQueue> queue)
    : mixer_(std::move(mixer)), queue_(std::move(queue)) {}

void MixerAdapter::mixIfNeeded(const std::filesystem::path& url, std::function<void()> done) {
    queue_->async([this, file = std::filesystem::path(url), done = std::move(done)] {
        mixer_.mixIfNeeded(file);
        done();
    });
}

} // namespace velmo
