#pragma once

#include <optional>
#include <string>

namespace velmo {

/// Why there is no X server to work on, in words for the user; absent when there is one. Before the QApplication is
/// made, which would end the process with a core dump instead.
std::optional<std::string> missingDisplay();

} // namespace velmo
