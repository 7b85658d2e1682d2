#include "settings/Format.h"

#include <QDateTime>

#include <gmock/gmock.h>

#include <limits>

namespace velmo {
namespace {

std::chrono::system_clock::time_point at(int year, int month, int day, int hour = 12, int minute = 0) {
    const QDateTime local(QDate(year, month, day), QTime(hour, minute));
    return std::chrono::system_clock::time_point(std::chrono::milliseconds(local.toMSecsSinceEpoch()));
}

TEST(FormatDuration, CutsFractionsAndShowsHoursFromOneHourOn) {
    EXPECT_EQ(Format::duration(0), "00:00");
    EXPECT_EQ(Format::duration(59.9), "00:59");
    EXPECT_EQ(Format::duration(60), "01:00");
    EXPECT_EQ(Format::duration(3599.999), "59:59");
    EXPECT_EQ(Format::duration(3600), "1:00:00");
    EXPECT_EQ(Format::duration(36061), "10:01:01");
    EXPECT_EQ(Format::duration(360000), "100:00:00");
}

TEST(FormatDuration, OfANumberThatIsNoTimeIsZero) {
    EXPECT_EQ(Format::duration(-3), "00:00");
    EXPECT_EQ(Format::duration(-0.5), "00:00");
    EXPECT_EQ(Format::duration(std::numeric_limits<double>::quiet_NaN()), "00:00");
    EXPECT_EQ(Format::duration(-std::numeric_limits<double>::infinity()), "00:00");
    EXPECT_FALSE(Format::duration(std::numeric_limits<double>::infinity()).isEmpty());
}

TEST(FormatBytes, UsesDecimalUnitsAndADecimalComma) {
    EXPECT_EQ(Format::bytes(0), "0 bytes");
    EXPECT_EQ(Format::bytes(1), "1 byte");
    EXPECT_EQ(Format::bytes(999), "999 bytes");
    EXPECT_EQ(Format::bytes(1000), "1 kB");
    EXPECT_EQ(Format::bytes(12'499), "12 kB");
    EXPECT_EQ(Format::bytes(3'149'000), "3,1 MB");
    EXPECT_EQ(Format::bytes(3'000'000), "3 MB");
    EXPECT_EQ(Format::bytes(8'400'000'000), "8,4 GB");
    EXPECT_EQ(Format::bytes(8'456'000'000), "8,46 GB");
    EXPECT_EQ(Format::bytes(100'000'000'000), "100 GB");
    EXPECT_EQ(Format::bytes(2'000'000'000'000), "2 TB");
}

TEST(FormatBytes, NeverSaysAThousandOfAUnit) {
    EXPECT_EQ(Format::bytes(999'499), "999 kB");
    EXPECT_EQ(Format::bytes(999'500), "1 MB");
    EXPECT_EQ(Format::bytes(999'950'000), "1 GB");
    EXPECT_EQ(Format::bytes(std::numeric_limits<std::int64_t>::max()), "9,22 EB");
}

TEST(FormatRelative, CountsLessThanADayByTheClock) {
    const auto now = at(2026, 11, 15, 9, 0);
    using namespace std::chrono_literals;
    EXPECT_EQ(Format::relative(now, now), "ahora");
    EXPECT_EQ(Format::relative(now - 1s, now), "hace 1 segundo");
    EXPECT_EQ(Format::relative(now - 59s, now), "hace 59 segundos");
    EXPECT_EQ(Format::relative(now - 60s, now), "hace 1 minuto");
    EXPECT_EQ(Format::relative(now - 59min, now), "hace 59 minutos");
    EXPECT_EQ(Format::relative(now - 2h, now), "hace 2 horas");
    EXPECT_EQ(Format::relative(now - 23h, now), "hace 23 horas");
}

TEST(FormatRelative, CountsMoreByTheCalendar) {
    const auto now = at(2026, 11, 15, 9, 0);
    EXPECT_EQ(Format::relative(at(2026, 11, 14, 8), now), "ayer");
    EXPECT_EQ(Format::relative(at(2026, 11, 13, 23), now), "anteayer") << "not two whole days, but the day before";
    EXPECT_EQ(Format::relative(at(2026, 11, 12), now), "hace 3 días");
    EXPECT_EQ(Format::relative(at(2026, 11, 9), now), "hace 6 días");
    EXPECT_EQ(Format::relative(at(2026, 11, 8), now), "hace 1 semana");
    EXPECT_EQ(Format::relative(at(2026, 10, 16), now), "hace 4 semanas");
    EXPECT_EQ(Format::relative(at(2026, 10, 15), now), "hace 1 mes");
    EXPECT_EQ(Format::relative(at(2025, 11, 16), now), "hace 11 meses");
    EXPECT_EQ(Format::relative(at(2025, 11, 15), now), "hace 1 año");
    EXPECT_EQ(Format::relative(at(2020, 1, 1), now), "hace 6 años");
}

TEST(FormatRelative, CountsTheMonthFromTheEndOfALongOneRight) {
    EXPECT_EQ(Format::relative(at(2026, 1, 31), at(2026, 2, 27)), "hace 3 semanas");
    EXPECT_EQ(Format::relative(at(2026, 1, 31), at(2026, 3, 1)), "hace 1 mes");
}

TEST(FormatRelative, SpeaksOfTheFutureToo) {
    const auto now = at(2026, 11, 15, 9, 0);
    EXPECT_EQ(Format::relative(at(2026, 11, 15, 11), now), "dentro de 2 horas");
    EXPECT_EQ(Format::relative(at(2026, 11, 16, 10), now), "mañana");
    EXPECT_EQ(Format::relative(at(2026, 11, 17, 10), now), "pasado mañana");
    EXPECT_EQ(Format::relative(at(2026, 11, 18, 10), now), "dentro de 3 días");
}

} // namespace
} // namespace velmo
