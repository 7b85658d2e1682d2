#pragma once

#include <QString>

/// Thin scroll bars without arrows.
namespace velmo::ScrollLook {

/// The style sheet of a vertical scroll bar.
QString sheet();

} // namespace velmo::ScrollLook
