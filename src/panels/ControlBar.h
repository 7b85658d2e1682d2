#pragma once

#include "panels/BarControls.h"
#include "session/Collaborators.h"
#include "ui/FloatingPanel.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QHBoxLayout;
class QSpacerItem;

namespace velmo {

class Button;
class ClockLabel;
class FlashStrip;
class LevelColumns;
class MicrophoneLevel;
class Prefs;
class RecordingDot;
class ZoomGroup;

/// The bar that drives a running recording: one row of controls, over it the flash. It calls the recorder and shows
/// its fields, and decides nothing. Main thread; made once, shown while a recording runs. Never takes the focus.
class ControlBar final : public FloatingPanel, public ControlBarPort {
    Q_OBJECT
public:
    static constexpr int kLeastWidth = 300;
    static constexpr int kLeastHeight = 110;

    /// All borrowed.
    struct Parts {
        BarTargets targets;
        const Prefs& prefs;
        const MicrophoneLevel* microphone = nullptr;     ///< may be null
        std::function<BarSurroundings()> surroundings{}; ///< asked whenever the bar is brought up to date; may be empty
    };

    explicit ControlBar(Parts parts);
    ~ControlBar() override;

    /// To be called when the surroundings have changed.
    void refresh();

    /// Fits the bar to its controls, puts it at the bottom of the screen and in front.
    void show(const Screen& screen) override;
    void hide() override;

protected:
    QRect card() const override;
    QPainterPath outline() const override;

private:
    /// What a bar that is too wide for the screen gives up, one after the other.
    enum class Tightness { roomy, noGaps, iconsOnly, tight, narrow, wordless };

    void watch();
    void build();
    void addButtons(QHBoxLayout& row);
    Button* makeButton(const BarControl& control);
    void addLine(QHBoxLayout& row, int group);
    BarState state() const;
    QString inKeys(const QString& text) const;
    void showButton(std::size_t index, const BarState& state);
    void showClock();
    void press(const BarControl& control, Button& button);
    void openMenu(const BarControl& control, QPoint place);
    QPoint besideRow(QPoint place, QSize menu) const;
    void apply(Tightness tightness);
    void fitToContent();

    const Parts parts_;
    RecorderController& recorder_;
    FlashStrip* flash_ = nullptr;
    QWidget* row_ = nullptr;
    RecordingDot* dot_ = nullptr;
    ClockLabel* clock_ = nullptr;
    Button* finish_ = nullptr;
    LevelColumns* level_ = nullptr;
    ZoomGroup* zoom_ = nullptr;
    std::vector<Button*> buttons_;   // one for each of barControls()
    std::vector<QSpacerItem*> gaps_; // before each button; null for the first of a group and in the zoom's capsule
    Tightness tightness_ = Tightness::roomy;
    int freeWidth_ = 0; // of the screen that the bar is on; 0 before it was shown
    struct Line {
        QWidget* widget;
        int group;
    };
    std::vector<Line> lines_; // before the first button of each group
    QTimer fit_;
};

} // namespace velmo
