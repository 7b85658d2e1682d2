#pragma once

#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "surfaces/PrompterScroll.h"

#include <QObject>
#include <QRect>

#include <memory>

namespace velmo {

class Clock;
class Prefs;
class PrompterPanel;

/// The teacher's script in a strip under the top edge of the recorded screen. It scrolls by itself, by the time that
/// passes, and is never in the video. Text, speed and size are the user's settings. Main thread; made once; its window
/// is made when it is first shown.
class Teleprompter final : public QObject, public TeleprompterPort {
    Q_OBJECT

public:
    /// All borrowed.
    struct Services {
        Prefs& prefs;
        const Clock& clock;
        MainTimers& timers;
    };
    explicit Teleprompter(const Services& services);
    ~Teleprompter() override;

    /// Whether there is anything to read.
    bool hasScript() const override;
    bool visible() const override { return visible_; }
    bool playing() const { return scroll_.playing(); }
    /// Points that the text has moved.
    double position() const { return scroll_.position(); }

    /// Comes up paused, at the beginning of the text; where it is seen on that screen already, it stays as it is.
    /// Nothing happens without a script.
    void show(const Screen& screen) override;
    void hide() override;
    void toggle(const Screen& screen);

    void play();
    void pause();
    void togglePlay() override;

    // Steps between limits, kept as settings.
    void faster();
    void slower();
    void biggerText();
    void smallerText();

    /// What it covers of the screen, in Qt's coordinates; empty while hidden.
    QRect place() const;

    /// For tests; null until it was shown.
    const PrompterPanel* panel() const { return panel_.get(); }

signals:
    void visibleChanged();
    void playingChanged();

private:
    void make();
    void tick();
    void changeText(double by);
    void changeSpeed(double by);
    double speed() const;
    double fontSize() const;

    const Services services_;
    std::unique_ptr<PrompterPanel> panel_;
    PrompterScroll scroll_;
    std::unique_ptr<MainTimer> timer_; // runs while playing; it may end in its own firing, so it is kept until the next
    bool visible_ = false;
};

} // namespace velmo
