#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace velmo {

/// What a settings enum is beside its cases: `static constexpr std::array rows`, one row a case, in the order of
/// the cases, each with `value` (the case), `raw` (the text that the store holds) and what else belongs to a case.
/// Specialised in the header of each enum.
template <typename E>
struct EnumTable;

template <typename E>
concept SettingsEnum = requires {
    EnumTable<E>::rows.front().raw;
    EnumTable<E>::rows.front().value;
};

template <SettingsEnum E>
constexpr const auto& rowOf(E value) {
    return EnumTable<E>::rows[static_cast<std::size_t>(value)];
}

/// All cases, in order.
template <SettingsEnum E>
constexpr auto allCases() {
    std::array<E, EnumTable<E>::rows.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        cases[i] = EnumTable<E>::rows[i].value;
    }
    return cases;
}

/// The text that stands for the case in the store; also its identity in lists.
template <SettingsEnum E>
QString rawValue(E value) {
    return QString::fromUtf8(rowOf(value).raw);
}

/// Absent for an unknown text.
template <SettingsEnum E>
std::optional<E> fromRawValue(const QString& raw) {
    for (const auto& row : EnumTable<E>::rows) {
        if (raw == QString::fromUtf8(row.raw)) {
            return row.value;
        }
    }
    return std::nullopt;
}

/// The Spanish name shown to the user, for the enums that have one.
template <SettingsEnum E>
requires requires {
    EnumTable<E>::rows.front().title;
}
QString title(E value) {
    return QString::fromUtf8(rowOf(value).title);
}

/// Rows stand in the order of the cases, so that a case is its row's index.
template <typename Rows>
constexpr bool rowsInOrder(const Rows& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows[i].value) != i) {
            return false;
        }
    }
    return true;
}

} // namespace velmo
