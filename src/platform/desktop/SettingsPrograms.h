#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The desktop's own settings, found by their desktop files. Main thread.
namespace velmo::SettingsPrograms {

enum class Page { screen, camera, sound };

/// What starts the nearest page that this desktop has; absent when none is known. `folders` hold desktop files, the
/// first that has one counts; `desktop` is the desktop's names, as XDG_CURRENT_DESKTOP has them.
std::optional<QStringList> commandFor(Page page, const QStringList& folders, const QString& desktop);
/// For the desktop that the program runs on.
std::optional<QStringList> commandFor(Page page);
/// False when there is none, or it does not start.
bool open(Page page);

} // namespace velmo::SettingsPrograms
