#pragma once

#include "platform/Screens.h"
#include "settings/Prefs.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace velmo {

class Picker;

/// The picture's quality, and what it comes to on the screen that will be recorded. Main thread.
class ResolutionRow final : public QWidget {
    Q_OBJECT
public:
    /// `prefs` is borrowed.
    explicit ResolutionRow(Prefs& prefs, QWidget* parent = nullptr);

    /// The screen that will be recorded; absent when none is known.
    void setScreen(const std::optional<Screen>& screen);

    /// "1920 × 1080 px · fluida y con archivos livianos"
    static QString caption(VideoQuality quality, const std::optional<Screen>& screen);

private:
    void refresh();

    Prefs& prefs_;
    std::optional<Screen> screen_;
    Picker* picker_;
    QLabel* caption_;
};

} // namespace velmo
