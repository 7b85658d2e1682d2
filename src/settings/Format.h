#pragma once

#include <QString>

#include <chrono>
#include <cstdint>

/// Texts of a time, a size and a date, in Spanish. Any thread.
namespace velmo::Format {

/// "05:09", from one hour on "1:05:09". Fractions are cut; a negative or unusable number is 00:00.
QString duration(double seconds);

/// Decimal units with a decimal comma: "999 bytes", "12 kB", "3,1 MB", "8,4 GB".
QString bytes(std::int64_t count);

/// `date` as seen at `now`: "hace 2 horas", "ayer", "anteayer", "hace 1 semana", "dentro de 3 días". Less than a day
/// counts by the clock, more by the calendar of the local time zone.
QString relative(std::chrono::system_clock::time_point date, std::chrono::system_clock::time_point now);

} // namespace velmo::Format
