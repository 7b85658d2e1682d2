#include "app/DisplayCheck.h"

#include <xcb/xcb.h>

#include <cstdlib>

namespace velmo {
namespace {

std::string displayName() {
    const char* name = std::getenv("DISPLAY");
    return name != nullptr ? name : "";
}

} // namespace

void DisplayCheck::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

DisplayCheck::DisplayCheck() {
    if (!displayName().empty()) {
        connection_.reset(xcb_connect(nullptr, nullptr));
    }
}

std::optional<std::string> DisplayCheck::missing() const {
    if (!connection_) {
        return "Velmo Studio necesita una sesión gráfica X11, y aquí no hay ninguna (DISPLAY no está definida).";
    }
    if (xcb_connection_has_error(connection_.get()) != 0) {
        return "Velmo Studio no pudo abrir la pantalla «" + displayName() +
               "»: el servidor X11 no responde o no permite el acceso.";
    }
    return std::nullopt;
}

} // namespace velmo
