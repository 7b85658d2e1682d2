#pragma once

#include "base/Result.h"

#include <filesystem>
#include <string>

namespace velmo {

/// What the desktop does with files. Main thread; none waits for another program.
class FileActions {
public:
    virtual ~FileActions() = default;
    virtual Result<void> moveToTrash(const std::filesystem::path& file) = 0;
    /// Shows the file selected in the file manager.
    virtual void reveal(const std::filesystem::path& file) = 0;
    /// Puts the file, not its name, on the clipboard.
    virtual void copyToClipboard(const std::filesystem::path& file) = 0;
    virtual void open(const std::filesystem::path& fileOrFolder) = 0;
    virtual void openAddress(const std::string& url) = 0;
};

} // namespace velmo
