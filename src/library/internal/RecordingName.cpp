#include "library/internal/RecordingName.h"

#include <QDateTime>

#include <array>

namespace velmo::internal {

namespace {

// Spelled out: the name is part of the library's format and must not follow the locale data of the system.
constexpr std::array kMonths{"ene", "feb", "mar", "abr", "may", "jun", "jul", "ago", "sept", "oct", "nov", "dic"};

} // namespace

QString recordingName(std::chrono::system_clock::time_point now) {
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count());
    const QDate date = local.date();
    return QStringLiteral("Grabación %1 %2 %3 a las %4")
        .arg(date.day())
        .arg(QString::fromLatin1(kMonths[static_cast<std::size_t>(date.month() - 1)]))
        .arg(date.year())
        .arg(local.toString(QStringLiteral("HH.mm")));
}

QString cleanedName(QString name) {
    name.remove(QChar(u'\0')); // would end the name for the file system
    return name.replace(u'/', u'-').replace(u':', u'.').trimmed();
}

} // namespace velmo::internal
