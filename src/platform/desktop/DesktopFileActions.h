#pragma once

#include "platform/FileActions.h"

#include <QObject>

namespace velmo {

/// File actions through the freedesktop means: the trash, the file manager's D-Bus interface, the clipboard's file
/// lists, xdg-open. Needs the QGuiApplication. Main thread; programs are started and left alone.
class DesktopFileActions final : public QObject, public FileActions {
public:
    Result<void> moveToTrash(const std::filesystem::path& file) override;
    void reveal(const std::filesystem::path& file) override;
    void copyToClipboard(const std::filesystem::path& file) override;
    void open(const std::filesystem::path& fileOrFolder) override;
    void openAddress(const std::string& url) override;
};

} // namespace velmo
