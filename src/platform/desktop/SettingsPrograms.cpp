#include "platform/desktop/SettingsPrograms.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>

namespace velmo::SettingsPrograms {

namespace {

/// Names of desktop files, the most fitting first.
struct Places {
    Page page;
    std::initializer_list<const char*> files;
};

const Places kPlaces[] = {
    {Page::screen,
     {"gnome-privacy-panel", "kcm_app-permissions", "org.gnome.Settings", "gnome-control-center", "systemsettings",
      "cinnamon-settings", "xfce-settings-manager", "matecc", "lxqt-config"}},
    {Page::camera,
     {"gnome-camera-panel", "kcm_app-permissions", "gnome-privacy-panel", "org.gnome.Settings", "gnome-control-center",
      "systemsettings", "cinnamon-settings", "xfce-settings-manager", "matecc", "lxqt-config"}},
    {Page::sound,
     {"gnome-sound-panel", "kcm_pulseaudio", "cinnamon-settings-sound", "mate-volume-control", "pavucontrol-qt",
      "org.pulseaudio.pavucontrol", "pavucontrol", "org.gnome.Settings", "gnome-control-center", "systemsettings",
      "xfce-settings-manager"}},
};

/// The keys of the main group.
QMap<QString, QString> read(const QString& path) {
    QMap<QString, QString> entry;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return entry;
    }
    bool inside = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'[')) {
            inside = line == QStringLiteral("[Desktop Entry]");
        } else if (const qsizetype sign = line.indexOf(u'='); inside && sign > 0) {
            entry.insert(line.left(sign).trimmed(), line.mid(sign + 1).trimmed());
        }
    }
    return entry;
}

bool sharesName(const QString& list, const QString& desktop, QChar separator) {
    const QStringList wanted = list.split(separator, Qt::SkipEmptyParts);
    const QStringList here = desktop.split(u':', Qt::SkipEmptyParts);
    return std::any_of(wanted.begin(), wanted.end(),
                       [&](const QString& one) { return here.contains(one, Qt::CaseInsensitive); });
}

bool isMeantFor(const QMap<QString, QString>& entry, const QString& desktop) {
    const QString only = entry.value(QStringLiteral("OnlyShowIn"));
    const QString never = entry.value(QStringLiteral("NotShowIn"));
    return (only.isEmpty() || sharesName(only, desktop, u';')) && !sharesName(never, desktop, u';') &&
           entry.value(QStringLiteral("Hidden")) != QStringLiteral("true");
}

/// Without the places for files and names that a launcher would fill in.
QStringList commandOf(const QMap<QString, QString>& entry) {
    QStringList command = QProcess::splitCommand(entry.value(QStringLiteral("Exec")));
    command.removeIf([](const QString& part) { return part.startsWith(u'%'); });
    return command;
}

bool isInstalled(const QStringList& command) {
    return !command.isEmpty() &&
           (QFileInfo(command.first()).isExecutable() || !QStandardPaths::findExecutable(command.first()).isEmpty());
}

} // namespace

std::optional<QStringList> commandFor(Page page, const QStringList& folders, const QString& desktop) {
    const auto places =
        std::find_if(std::begin(kPlaces), std::end(kPlaces), [page](const Places& one) { return one.page == page; });
    for (const char* name : places->files) {
        for (const QString& folder : folders) {
            const QString path = folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".desktop");
            if (!QFileInfo(path).isFile()) {
                continue;
            }
            const QMap<QString, QString> entry = read(path);
            const QStringList command = commandOf(entry);
            if (isMeantFor(entry, desktop) && isInstalled(command)) {
                return command;
            }
            break; // this folder's file hides those behind it
        }
    }
    return std::nullopt;
}

std::optional<QStringList> commandFor(Page page) {
    return commandFor(page, QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation),
                      qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
}

bool open(Page page) {
    const std::optional<QStringList> command = commandFor(page);
    return command && QProcess::startDetached(command->first(), command->mid(1));
}

} // namespace velmo::SettingsPrograms
