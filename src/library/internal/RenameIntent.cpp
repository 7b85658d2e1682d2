#include "library/internal/RenameIntent.h"

#include "base/AtomicFile.h"

#include <system_error>

namespace velmo::internal {

namespace {

// No file name holds a NUL or a slash.
constexpr char kBetween = '\0';

bool isName(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos && name != "." && name != "..";
}

} // namespace

RenameIntentFile::RenameIntentFile(const std::filesystem::path& folder) : file_(folder / ".velmo-renombrar") {}

std::optional<RenameIntent> RenameIntentFile::load() const {
    const auto content = readWholeFile(file_);
    if (!content) {
        return std::nullopt;
    }
    const std::string& text = content.value();
    const std::size_t between = text.find(kBetween);
    if (between == std::string::npos) {
        return std::nullopt;
    }
    RenameIntent intent{text.substr(0, between), text.substr(between + 1)};
    const bool isSound = isName(intent.from) && isName(intent.to) && intent.to.find(kBetween) == std::string::npos;
    return isSound ? std::optional(std::move(intent)) : std::nullopt;
}

void RenameIntentFile::save(const RenameIntent& intent) const {
    static_cast<void>(writeFileAtomically(file_, intent.from + kBetween + intent.to));
}

void RenameIntentFile::remove() const {
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
}

} // namespace velmo::internal
