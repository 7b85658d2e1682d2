#pragma once

#include "panels/setup/SetupContext.h"
#include "panels/setup/SetupSection.h"
#include "session/Collaborators.h"
#include "ui/DialogWindow.h"
#include "ui/Fade.h"

#include <vector>

class QVBoxLayout;

namespace velmo {

class Disclosure;
class FittingScrollArea;

/// Where a recording is prepared. Every control writes straight to the settings. Main thread; made once and reused.
/// Closing it by any means ends the preparation; `hide` only takes it away.
///
/// The window is head, upper part, foot and cards; what is in them are the files in panels/setup, of which each cares
/// for itself.
class SetupPanel final : public DialogWindow, public SetupPanelPort {
    Q_OBJECT
public:
    /// `material` are sections that another room makes; they stand where the class material does.
    explicit SetupPanel(SetupContext context, std::vector<SetupSection> material = {});
    ~SetupPanel() override;

    void show() override;
    void hide() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeHead();
    QWidget* makeColumn(std::vector<SetupSection> material);
    void addStart(QVBoxLayout& column);
    void addFoot(QVBoxLayout& column);
    void addCards(QVBoxLayout& column, std::vector<SetupSection> material);
    void showMoreOptions(bool more);
    void fit();
    void follow();
    void followScreens();
    void keepOnScreen();
    void place();
    QRect mainPlace() const;
    QRect standingPlace() const;

    SetupContext context_;
    Disclosure* more_ = nullptr;
    QWidget* cards_ = nullptr;
    FittingScrollArea* scroll_ = nullptr;
    Fade height_; // of the window
};

} // namespace velmo
