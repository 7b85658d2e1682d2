#include "library/internal/LeftoverFiles.h"

#include <string>
#include <system_error>
#include <vector>

namespace velmo::internal {

namespace {

constexpr std::chrono::hours kOld{1};

// '#' stands for a hexadecimal digit in capitals, '?' for a letter or a digit; the rest is itself.
constexpr const char* kPatterns[] = {
    ".mezcla-########-####-####-####-############.mp4",
    ".recorte-########-####-####-####-############.mp4",
    "..velmo-studio.json.??????",
    "..velmo-renombrar.??????",
};

bool matches(char c, char pattern) {
    const bool isDigit = c >= '0' && c <= '9';
    switch (pattern) {
    case '#':
        return isDigit || (c >= 'A' && c <= 'F');
    case '?':
        return isDigit || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    default:
        return c == pattern;
    }
}

bool isOurs(const std::string& name) {
    for (const std::string pattern : kPatterns) {
        bool fits = name.size() == pattern.size();
        for (std::size_t i = 0; fits && i < name.size(); ++i) {
            fits = matches(name[i], pattern[i]);
        }
        if (fits) {
            return true;
        }
    }
    return false;
}

} // namespace

void removeLeftovers(const std::filesystem::path& folder, std::filesystem::file_time_type now) {
    std::vector<std::filesystem::path> old;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unknown;
        const bool isFile = std::filesystem::is_regular_file(entry->symlink_status(unknown));
        const auto changed = entry->last_write_time(unknown);
        if (isFile && !unknown && changed + kOld < now && isOurs(entry->path().filename().native())) {
            old.push_back(entry->path());
        }
    }
    for (const auto& file : old) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
}

} // namespace velmo::internal
