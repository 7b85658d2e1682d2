#pragma once

#include "panels/BarControls.h"
#include "session/Collaborators.h"
#include "ui/FloatingPanel.h"

#include <QTimer>

#include <memory>
#include <vector>

class QHBoxLayout;

namespace velmo {

class Button;
class ClockLabel;
class FlashStrip;
class LevelColumns;
class MicrophoneMonitor;
class RecordingDot;

/// The bar that drives a running recording: one row of controls, over it the flash. It calls the recorder and shows
/// its fields, and decides nothing. Main thread; made once, shown while a recording runs. Never takes the focus.
class ControlBar final : public FloatingPanel, public ControlBarPort {
    Q_OBJECT
public:
    static constexpr int kLeastWidth = 300;
    static constexpr int kLeastHeight = 110;

    /// Borrowed; `microphone` may be null.
    ControlBar(RecorderController& recorder, const MicrophoneMonitor* microphone);
    ~ControlBar() override;

    /// Its button stands while there is material, and is lit while that is shown.
    void setMaterial(BarState::Material material);
    /// Its button is lit while the mouse draws.
    void setDrawing(bool drawing);

    /// Fits the bar to its controls, puts it at the bottom of the screen and in front.
    void show(const Screen& screen) override;
    void hide() override;

protected:
    QRect card() const override;
    QPainterPath outline() const override;

private:
    void build();
    void addButtons(QHBoxLayout& row);
    void addLine(QHBoxLayout& row, int group);
    void showState();
    void showClock();
    void fitToContent();

    RecorderController& recorder_;
    const MicrophoneMonitor* microphone_;
    FlashStrip* flash_ = nullptr;
    QWidget* row_ = nullptr;
    RecordingDot* dot_ = nullptr;
    ClockLabel* clock_ = nullptr;
    LevelColumns* level_ = nullptr;
    BarState::Material material_ = BarState::Material::none;
    bool drawing_ = false;
    std::vector<Button*> buttons_; // one for each of barControls()
    struct Line {
        QWidget* widget;
        int group;
    };
    std::vector<Line> lines_; // before the first button of each group
    QTimer fit_;
};

} // namespace velmo
