#pragma once

#include "settings/Prefs.h"
#include "ui/ChoiceGroup.h"
#include "ui/Segments.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <initializer_list>

class QLayout;
class QVBoxLayout;

/// What the sections of the setup panel are made of. Each row shows its setting, writes it at once, and follows what
/// others write. A section is wider by `kRoom` at both sides than what is seen of it: there controls have their room
/// for marks of the focus.
namespace velmo::Rows {

inline constexpr int kRoom = 4;
/// Between two rows, and between a label and its control.
inline constexpr int kGap = 12;
inline constexpr int kLabelGap = 6;

/// The one column of a section.
QVBoxLayout* column(QWidget& section);

/// A switch for a setting, in `column`. A key in the hint is named as the user holds it.
void addSwitch(QVBoxLayout& column, Prefs& prefs, Setting<bool>& setting, const QString& text,
               const QString& hint = {});
/// A row whose own room is `own` at both sides.
void add(QVBoxLayout& column, QWidget* row, int own = 0);
/// A control under its label, with a hint that may be empty under it.
void addLabelled(QVBoxLayout& column, const QString& label, QWidget* control, const QString& hint = {}, int own = 0);
void addHint(QVBoxLayout& column, const QString& text);

/// Runs `show` now and whenever one of `settings` has another value, as long as `owner` lives.
void follow(QObject& owner, Prefs& prefs, std::initializer_list<const SettingBase*> settings,
            std::function<void()> show);

/// Ties a group whose ids are the raw values of `E` to a setting.
template <typename E>
void bind(ChoiceGroup& group, Prefs& prefs, Setting<E>& setting) {
    QObject::connect(&group, &ChoiceGroup::picked, &group,
                     [&setting](const QString& id) { setting = fromRawValue<E>(id).value_or(setting.value()); });
    follow(group, prefs, {&setting}, [&group, &setting] { group.setCurrent(rawValue(setting.value())); });
}

/// The choices of an enum that has titles.
template <typename E>
std::vector<Segments::Choice> choices() {
    std::vector<Segments::Choice> all;
    for (const E value : allCases<E>()) {
        all.push_back({rawValue(value), title(value)});
    }
    return all;
}

} // namespace velmo::Rows
