#pragma once

#include <QString>

#include <filesystem>
#include <functional>
#include <vector>

namespace velmo {

/// Lets the user pick existing files. Main thread.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    /// Any number of files, no folders. `prompt` stands on the confirming button. Returns at once; `chosen` is called
    /// when the user confirms, and never when he cancels. A second call while the first is open replaces it.
    virtual void chooseFiles(const QString& title, const QString& prompt,
                             std::function<void(const std::vector<std::filesystem::path>&)> chosen) = 0;
};

} // namespace velmo
