#include "settings/Format.h"

#include <QDate>
#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmo::Format {

namespace {

constexpr double kLongestDuration = 1e12; // keeps the conversion to whole seconds defined

struct ByteUnit {
    double size;
    const char* name;
    int decimals;
};

constexpr std::array kByteUnits{
    ByteUnit{1e3, "kB", 0},  ByteUnit{1e6, "MB", 1},  ByteUnit{1e9, "GB", 2},
    ByteUnit{1e12, "TB", 2}, ByteUnit{1e15, "PB", 2}, ByteUnit{1e18, "EB", 2},
};

/// At most `decimals` digits behind a decimal comma, no zeros at the end.
QString decimalText(double value, int decimals) {
    QString text = QString::number(value, 'f', decimals);
    if (decimals > 0) {
        while (text.endsWith(u'0')) {
            text.chop(1);
        }
        if (text.endsWith(u'.')) {
            text.chop(1);
        }
    }
    return text.replace(u'.', u',');
}

double rounded(double value, int decimals) {
    const double factor = std::pow(10, decimals);
    return std::round(value * factor) / factor;
}

struct TimeUnit {
    const char* one;
    const char* many;
};

constexpr TimeUnit kSeconds{"segundo", "segundos"};
constexpr TimeUnit kMinutes{"minuto", "minutos"};
constexpr TimeUnit kHours{"hora", "horas"};
constexpr TimeUnit kDays{"día", "días"};
constexpr TimeUnit kWeeks{"semana", "semanas"};
constexpr TimeUnit kMonths{"mes", "meses"};
constexpr TimeUnit kYears{"año", "años"};

struct Distance {
    qint64 count;
    TimeUnit unit;
    bool isDays = false;
};

Distance clockDistance(qint64 seconds) {
    if (seconds < 60) {
        return {seconds, kSeconds};
    }
    return seconds < 3600 ? Distance{seconds / 60, kMinutes} : Distance{seconds / 3600, kHours};
}

/// Whole months from `earlier` to `later`.
int monthsBetween(QDate earlier, QDate later) {
    int months = (later.year() - earlier.year()) * 12 + later.month() - earlier.month();
    return earlier.addMonths(months) > later ? months - 1 : months;
}

Distance calendarDistance(QDate earlier, QDate later) {
    const int months = monthsBetween(earlier, later);
    if (months >= 12) {
        return {months / 12, kYears};
    }
    if (months >= 1) {
        return {months, kMonths};
    }
    const qint64 days = earlier.daysTo(later);
    return days >= 7 ? Distance{days / 7, kWeeks} : Distance{days, kDays, true};
}

QDateTime localTime(std::chrono::system_clock::time_point time) {
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count());
}

QString distanceText(const Distance& distance, bool past) {
    if (distance.isDays && distance.count <= 2) {
        static constexpr std::array kPastDays{"hoy", "ayer", "anteayer"};
        static constexpr std::array kFutureDays{"hoy", "mañana", "pasado mañana"};
        return QString::fromUtf8((past ? kPastDays : kFutureDays)[static_cast<std::size_t>(distance.count)]);
    }
    return QStringLiteral("%1 %2 %3")
        .arg(past ? QStringLiteral("hace") : QStringLiteral("dentro de"))
        .arg(distance.count)
        .arg(QString::fromUtf8(distance.count == 1 ? distance.unit.one : distance.unit.many));
}

} // namespace

QString duration(double seconds) {
    const double whole = std::isnan(seconds) ? 0 : std::clamp(std::floor(seconds), 0.0, kLongestDuration);
    const auto total = static_cast<qint64>(whole);
    const auto twoDigits = [](qint64 part) { return QString::number(part).rightJustified(2, u'0'); };
    const QString minutesAndSeconds = twoDigits(total / 60 % 60) + u':' + twoDigits(total % 60);
    return total >= 3600 ? QString::number(total / 3600) + u':' + minutesAndSeconds : minutesAndSeconds;
}

QString bytes(std::int64_t count) {
    const double size = std::abs(static_cast<double>(count));
    if (size < kByteUnits.front().size) {
        return QStringLiteral("%1 %2").arg(count).arg(size == 1 ? QStringLiteral("byte") : QStringLiteral("bytes"));
    }
    const ByteUnit* unit = &kByteUnits.front();
    // What would be rounded up to 1000 of a unit is 1 of the next.
    while (unit != &kByteUnits.back() && rounded(size / unit->size, unit->decimals) >= 1000) {
        ++unit;
    }
    const double value = static_cast<double>(count) / unit->size;
    return decimalText(rounded(value, unit->decimals), unit->decimals) + u' ' + QString::fromLatin1(unit->name);
}

QString relative(std::chrono::system_clock::time_point date, std::chrono::system_clock::time_point now) {
    const bool past = date <= now;
    const auto [earlier, later] = std::minmax(date, now);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(later - earlier);
    if (seconds.count() == 0) {
        return QStringLiteral("ahora");
    }
    constexpr std::chrono::hours kDay{24};
    return distanceText(seconds < kDay ? clockDistance(seconds.count())
                                       : calendarDistance(localTime(earlier).date(), localTime(later).date()),
                        past);
}

} // namespace velmo::Format
