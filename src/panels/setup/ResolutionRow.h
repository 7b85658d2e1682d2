#pragma once

#include "panels/setup/EachSecond.h"
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
    /// All borrowed.
    ResolutionRow(Prefs& prefs, const Screens& screens, MainTimers& timers, QWidget* parent = nullptr);

    /// "1920 × 1080 px · fluida y con archivos livianos"
    static QString caption(VideoQuality quality, const std::optional<Screen>& screen);

    /// On a machine of the old processor kind, once found out: what is more than the normal quality then gets a note.
    static bool isIntel();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeNote();
    void refresh();

    Prefs& prefs_;
    const Screens& screens_;
    Picker* picker_;
    QLabel* caption_;
    QWidget* note_;
    EachSecond eachSecond_;
};

} // namespace velmo
