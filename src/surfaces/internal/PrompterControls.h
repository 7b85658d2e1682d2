#pragma once

#include <QWidget>

class QLabel;

namespace velmo {

class Button;
class Prefs;
class Teleprompter;

/// The bottom row of the teleprompter: start and pause, speed, size, and a cross. Main thread.
class PrompterControls final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kHeight = 34;

    /// Borrowed; they must outlive the row.
    PrompterControls(Teleprompter& prompter, const Prefs& prefs);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Button* addButton(const char* symbol, const char* help, void (Teleprompter::*action)());
    void showPlaying();
    void showHelp();

    Teleprompter& prompter_;
    const Prefs& prefs_;
    Button* play_ = nullptr;
    QLabel* note_ = nullptr;
    int roomForNote_ = 0; // width of the row with it
};

} // namespace velmo
