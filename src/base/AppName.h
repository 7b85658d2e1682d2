#pragma once

#include <string_view>

namespace velmo::AppName {

/// The program's name for the user: window titles, the library folder, the folder on a shared drive.
inline constexpr std::string_view current = "Velmo Studio";

/// The maker's web address.
inline constexpr const char* site = "https://velmo.studio";

} // namespace velmo::AppName
