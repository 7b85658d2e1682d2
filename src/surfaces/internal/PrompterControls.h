#pragma once

#include "settings/ShortcutModifier.h"

#include <QWidget>

class QLabel;

namespace velmo {

class Button;
class Teleprompter;

/// The bottom row of the teleprompter: start and pause, speed, size, and a cross. Main thread.
class PrompterControls final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kHeight = 34;

    /// `prompter` is borrowed and must outlive the row.
    explicit PrompterControls(Teleprompter& prompter);

    /// For the help text.
    void setShortcutModifier(ShortcutModifier modifier);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Button* addButton(const char* symbol, const char* help, void (Teleprompter::*action)());
    void showPlaying();

    Teleprompter& prompter_;
    Button* play_ = nullptr;
    QLabel* note_ = nullptr;
};

} // namespace velmo
