#include "library/internal/MetadataFile.h"

#include "base/AtomicFile.h"

#include <cerrno>

namespace velmo::internal {

MetadataFile::MetadataFile(const std::filesystem::path& folder) : file_(folder / ".velmo-studio.json") {}

MetaByName MetadataFile::load() {
    const auto content = readWholeFile(file_);
    if (!content) {
        holdsUnreadable_ = content.error().code != ENOENT;
        return {};
    }
    MetaReading reading = metaFromJson(QByteArray::fromStdString(content.value()));
    holdsUnreadable_ = !reading.isWhole;
    return std::move(reading.entries);
}

bool MetadataFile::save(const MetaByName& meta) {
    if (holdsUnreadable_) {
        const auto aside = keepDamagedFileAside(file_);
        if (!aside && aside.error().code != ENOENT) {
            return false; // what lies there may still be worth more than what would replace it
        }
        holdsUnreadable_ = false;
    }
    const QByteArray json = jsonFromMeta(meta);
    return writeFileAtomically(file_, {json.constData(), static_cast<std::size_t>(json.size())}).ok();
}

} // namespace velmo::internal
