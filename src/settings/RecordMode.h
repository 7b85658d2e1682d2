#pragma once

#include "settings/EnumTable.h"

namespace velmo {

/// What is recorded.
enum class RecordMode { screenCam, screen, cam };

template <>
struct EnumTable<RecordMode> {
    struct Row {
        RecordMode value;
        std::string_view raw;
        std::string_view title;
        std::string_view symbol;
        bool usesScreen;
        bool usesCamera;
    };
    static constexpr std::array<Row, 3> rows{{
        {RecordMode::screenCam, "screenCam", "Pantalla + Cámara", "rectangle.inset.bottomleading.filled", true, true},
        {RecordMode::screen, "screen", "Pantalla", "display", true, false},
        {RecordMode::cam, "cam", "Cámara", "person.crop.square.fill", false, true},
    }};
    static_assert(rowsInOrder(rows));
};

/// Name of the icon.
inline QString symbol(RecordMode mode) {
    return QString::fromUtf8(rowOf(mode).symbol);
}
constexpr bool usesScreen(RecordMode mode) {
    return rowOf(mode).usesScreen;
}
constexpr bool usesCamera(RecordMode mode) {
    return rowOf(mode).usesCamera;
}

} // namespace velmo
