#pragma once

#include "base/AppName.h"

namespace velmo {

/// The maker's line and address, as the About panel, the Help menu and the status menu show them.
struct Credit {
    static constexpr const char* text = "Hecho por el equipo de Velmo Studio";
    static constexpr const char* site = AppName::site;
};

} // namespace velmo
