#pragma once

#include "platform/FileChooser.h"

#include <memory>

class QFileDialog;

namespace velmo {

/// The toolkit's file dialog, beside the event loop, not inside it. It goes with this object.
class DesktopFileChooser final : public FileChooser {
public:
    DesktopFileChooser();
    ~DesktopFileChooser() override;

    void chooseFiles(const QString& title, const QString& prompt,
                     std::function<void(const std::vector<std::filesystem::path>&)> chosen) override;

private:
    struct Later {
        void operator()(QFileDialog* dialog) const; // it may be in the middle of its own signal
    };
    std::unique_ptr<QFileDialog, Later> dialog_;
};

} // namespace velmo
