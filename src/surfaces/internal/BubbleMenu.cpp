#include "surfaces/internal/BubbleMenu.h"

#include "ui/ActionItem.h"

#include <cmath>
#include <utility>

namespace velmo {
namespace {

struct Corner {
    const char* title;
    double fraction;
};
constexpr Corner kCorners[] = {
    {"Rectas", 0}, {"Suaves", 0.12}, {"Redondeadas", 0.22}, {"Muy redondeadas", 0.35}, {"Píldora", 0.5}};
constexpr double kSameCorner = 0.02;

} // namespace

BubbleMenu::BubbleMenu(Prefs& prefs, std::function<void()> apply)
    : prefs_(prefs), apply_(std::move(apply)), menu_(std::make_unique<PopupMenu>()) {}

void BubbleMenu::addChoice(QMenu& menu, const QString& title, bool checked, std::function<void()> chosen) {
    auto* item = new ActionItem(
        title, {},
        [chosen = std::move(chosen), apply = apply_] {
            chosen();
            apply();
        },
        &menu);
    item->setCheckable(true);
    item->setChecked(checked);
    menu.addAction(item); // the menu owns it
}

void BubbleMenu::addChoice(const QString& title, bool checked, std::function<void()> chosen) {
    addChoice(*menu_, title, checked, std::move(chosen));
}

void BubbleMenu::addCommand(const QString& title, std::function<void()> chosen) {
    menu_->addAction(new ActionItem(title, {}, std::move(chosen), menu_.get())); // the menu owns it
}

void BubbleMenu::addDisabled(const QString& title) {
    addCommand(title, {});
}

QMenu& BubbleMenu::submenu(const QString& title) {
    auto* menu = new PopupMenu(menu_.get()); // which owns it
    menu->setTitle(title);
    menu_->addMenu(menu);
    return *menu;
}

template <SettingsEnum E>
void BubbleMenu::addTitles(QMenu& menu, Setting<E>& setting) {
    for (const E value : allCases<E>()) {
        addChoice(menu, title(value), setting.value() == value, [&setting, value] { setting = value; });
    }
}

void BubbleMenu::addSizes(const BubbleKind& kind) {
    Setting<BubbleSize>& setting = prefs_.*kind.size;
    for (const BubbleSize size : allCases<BubbleSize>()) {
        addChoice(*menu_, QStringLiteral("Tamaño ") + rawValue(size).toUpper(), setting.value() == size,
                  [&setting, size] { setting = size; });
    }
}

void BubbleMenu::addShapes(const BubbleKind& kind) {
    addTitles(*menu_, prefs_.*kind.shape);
}

void BubbleMenu::addRingStyles() {
    addTitles(submenu(QStringLiteral("Borde")), prefs_.ringStyle);
}

void BubbleMenu::addPalettes() {
    QMenu& menu = submenu(QStringLiteral("Colores del camaleón"));
    for (const ChameleonPalette palette : allCases<ChameleonPalette>()) {
        addChoice(menu, title(palette), prefs_.chameleonPalette.value() == palette, [&prefs = prefs_, palette] {
            prefs.chameleonPalette = palette;
            prefs.ringStyle = RingStyle::chameleon;
        });
    }
}

void BubbleMenu::addWeights() {
    addTitles(submenu(QStringLiteral("Grosor del borde")), prefs_.ringWeight);
}

void BubbleMenu::addCorners() {
    QMenu& menu = submenu(QStringLiteral("Esquinas"));
    for (const Corner& corner : kCorners) {
        const bool checked = std::abs(prefs_.cornerFraction - corner.fraction) < kSameCorner;
        addChoice(menu, QString::fromUtf8(corner.title), checked,
                  [&prefs = prefs_, fraction = corner.fraction] { prefs.cornerFraction = fraction; });
    }
}

void BubbleMenu::addSwitch(const QString& title, Setting<bool> Prefs::*setting) {
    Setting<bool>& field = prefs_.*setting;
    addChoice(*menu_, title, field.value(), [&field] { field = !field.value(); });
}

} // namespace velmo
