#pragma once

#include "settings/Prefs.h"
#include "surfaces/internal/CameraBubble.h"
#include "ui/PopupMenu.h"

#include <functional>
#include <memory>

namespace velmo {

/// The bubbles' menus, put together of parts. Each choice is written to the settings, then `apply` is called. The
/// current value bears a check mark.
class BubbleMenu {
public:
    BubbleMenu(Prefs& prefs, std::function<void()> apply);

    void addSizes(const BubbleKind& kind);
    void addShapes(const BubbleKind& kind);
    void addRingStyles();
    void addPalettes();
    void addWeights();
    void addCorners();
    void addSwitch(const QString& title, Setting<bool> Prefs::*setting);
    void addChoice(const QString& title, bool checked, std::function<void()> chosen);
    void addCommand(const QString& title, std::function<void()> chosen);
    void addDisabled(const QString& title);
    void addSeparator() { menu_->addSeparator(); }

    std::unique_ptr<QMenu> take() { return std::move(menu_); }

private:
    QMenu& submenu(const QString& title);
    void addChoice(QMenu& menu, const QString& title, bool checked, std::function<void()> chosen);
    template <SettingsEnum E>
    void addTitles(QMenu& menu, Setting<E>& setting);

    Prefs& prefs_;
    std::function<void()> apply_;
    std::unique_ptr<QMenu> menu_;
};

} // namespace velmo
