#pragma once

#include "platform/FileActions.h"
#include "platform/FileChooser.h"

#include <QString>

#include <functional>

namespace velmo {

/// What the class kit asks of its surroundings. All on the main thread; the references are borrowed.
struct KitServices {
    FileActions& files;
    FileChooser& chooser;
    std::function<void()> toFront; ///< brings the application before the others
    /// Names this moment of the recording, where one is running.
    std::function<void(const QString& title, const QString& location)> addChapter;
    std::function<void(const QString& text)> flash; ///< a short message
};

} // namespace velmo
