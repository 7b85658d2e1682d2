#pragma once

#include "panels/SetupCard.h"
#include "platform/Screens.h"
#include "session/Collaborators.h"
#include "settings/Devices.h"
#include "settings/Prefs.h"
#include "ui/DialogWindow.h"

#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

class QVBoxLayout;
class QLabel;

namespace velmo {

class Disclosure;
class FittingScrollArea;
class LevelMeter;
class MicrophoneLevel;
class ModeTile;
class Picker;
class RecorderController;
class ResolutionRow;
class SwitchRow;

/// Where a recording is prepared. Every control writes straight to the settings. Main thread; made once and reused.
/// Closing it by any means ends the preparation; `hide` only takes it away.
class SetupPanel final : public DialogWindow, public SetupPanelPort {
    Q_OBJECT
public:
    /// A section that another room makes. What `make` gives is owned by the panel and keeps Button::kRoom free at both
    /// sides for marks of the focus.
    struct Section {
        SetupCard::Head head;
        std::function<QWidget*()> make;
    };
    struct Parts {
        RecorderController& recorder;
        Prefs& prefs;
        const Devices& devices;
        const Screens& screens;
        const MicrophoneLevel& microphone;
        /// What can be recorded on this machine with this program. A choice is offered where there is more than one.
        std::vector<RecordMode> modes;
        /// Behind the panel's own cards.
        std::vector<Section> sections = {};
    };

    /// All borrowed.
    explicit SetupPanel(Parts parts);
    ~SetupPanel() override;

    void show() override;
    void hide() override;

    /// The screen that a recording would take now.
    std::optional<Screen> targetScreen() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeHead();
    QWidget* makeColumn();
    void addModes(QVBoxLayout& column);
    void addMicrophone(QVBoxLayout& column);
    void addStart(QVBoxLayout& column);
    void addFoot(QVBoxLayout& column);
    void addCards(QVBoxLayout& column);
    QWidget* makeScreenCard();
    QWidget* makeVideoCard();
    QWidget* makeCard(const Section& section);
    SwitchRow* makeSwitch(Setting<bool>& setting, const QString& text, const QString& hint = {});

    void refresh();
    void refreshMicrophones();
    void refreshScreens();
    void showMoreOptions(bool more);
    void fit();
    void place();
    QRect freePlace() const;

    Parts parts_;
    std::vector<ModeTile*> tiles_;
    Picker* microphone_ = nullptr;
    QWidget* meterRow_ = nullptr;
    LevelMeter* meter_ = nullptr;
    Disclosure* more_ = nullptr;
    QWidget* cards_ = nullptr;
    Picker* screen_ = nullptr;
    ResolutionRow* resolution_ = nullptr;
    FittingScrollArea* scroll_ = nullptr;
    std::vector<std::function<void()>> refreshes_; // one for each switch
    QTimer devicesTimer_;
};

} // namespace velmo
