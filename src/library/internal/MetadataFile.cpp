#include "library/internal/MetadataFile.h"

#include "base/AtomicFile.h"

#include <cerrno>

namespace velmo::internal {

MetadataFile::MetadataFile(const std::filesystem::path& folder) : file_(folder / ".velmo-studio.json") {}

MetaByName MetadataFile::load() {
    const auto content = readWholeFile(file_);
    auto meta = content ? metaFromJson(QByteArray::fromStdString(content.value())) : std::nullopt;
    holdsUnreadable_ = !meta && (content.ok() || content.error().code != ENOENT);
    return meta ? std::move(*meta) : MetaByName();
}

void MetadataFile::save(const MetaByName& meta) {
    if (holdsUnreadable_) {
        const auto aside = keepDamagedFileAside(file_);
        if (!aside && aside.error().code != ENOENT) {
            return; // what lies there may still be worth more than what would replace it
        }
        holdsUnreadable_ = false;
    }
    const QByteArray json = jsonFromMeta(meta);
    static_cast<void>(writeFileAtomically(file_, {json.constData(), static_cast<std::size_t>(json.size())}));
}

} // namespace velmo::internal
