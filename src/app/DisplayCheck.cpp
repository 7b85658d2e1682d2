#include "app/DisplayCheck.h"

#include <xcb/xcb.h>

#include <cstdlib>

namespace velmo {

std::optional<std::string> missingDisplay() {
    const char* name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0') {
        return "Velmo Studio necesita una sesión gráfica X11, y aquí no hay ninguna (DISPLAY no está definida).";
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool failed = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    if (failed) {
        return "Velmo Studio no pudo abrir la pantalla «" + std::string(name) +
               "»: el servidor X11 no responde o no permite el acceso.";
    }
    return std::nullopt;
}

} // namespace velmo
