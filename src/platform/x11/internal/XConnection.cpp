#include "platform/x11/internal/XConnection.h"

#include "platform/ScreenCapture.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <array>
#include <string_view>
#include <utility>

namespace velmo::x11 {
namespace {

Error failedToStart(const char* text) {
    return {kStreamErrorDomain, kStreamErrorFailedToStart, text};
}

const xcb_screen_t* screenWithNumber(xcb_connection_t* connection, int number) {
    auto it = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; it.rem > 0 && number > 0; --number) {
        xcb_screen_next(&it);
    }
    return it.rem > 0 ? it.data : nullptr;
}

const xcb_visualtype_t* rootVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen.root_visual) {
                return visual.data;
            }
        }
    }
    return nullptr;
}

/// Pixels in memory are B, G, R, pad: what the canvas and the converters take.
bool pixelsAreBgrx(const xcb_setup_t& setup, const xcb_screen_t& screen) {
    const xcb_visualtype_t* visual = rootVisual(screen);
    if (screen.root_depth != 24 || setup.image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST || visual == nullptr ||
        visual->red_mask != 0xff0000 || visual->green_mask != 0xff00 || visual->blue_mask != 0xff) {
        return false;
    }
    for (auto format = xcb_setup_pixmap_formats_iterator(&setup); format.rem > 0; xcb_format_next(&format)) {
        if (format.data->depth == 24) {
            return format.data->bits_per_pixel == 32;
        }
    }
    return false;
}

} // namespace

Result<std::unique_ptr<XConnection>> XConnection::open(const std::optional<std::string>& displayName) {
    std::unique_ptr<XConnection> self(new XConnection);
    int number = 0;
    self->connection_ = xcb_connect(displayName ? displayName->c_str() : nullptr, &number);
    if (self->lost()) {
        return failedToStart("No se pudo abrir la pantalla: no hay un servidor gráfico X11.");
    }
    self->screen_ = screenWithNumber(self->connection_, number);
    if (self->screen_ == nullptr) {
        return failedToStart("No se pudo abrir la pantalla: el servidor gráfico no la tiene.");
    }
    if (Result<void> prepared = self->prepare(number); !prepared) {
        return prepared.error();
    }
    return self;
}

XConnection::~XConnection() {
    xcb_disconnect(connection_);
}

Result<void> XConnection::prepare(int screenNumber) {
    if (!pixelsAreBgrx(*xcb_get_setup(connection_), *screen_)) {
        return failedToStart("La pantalla usa una profundidad de color que no se puede grabar (se necesitan 24 bits).");
    }
    for (xcb_extension_t* extension : {&xcb_composite_id, &xcb_damage_id, &xcb_xfixes_id, &xcb_shape_id, &xcb_shm_id,
                                       &xcb_randr_id, &xcb_res_id, &xcb_input_id}) {
        xcb_prefetch_extension_data(connection_, extension);
    }
    if (!negotiateRequired()) {
        return failedToStart("El servidor gráfico no permite grabar ventanas (le falta la extensión Composite).");
    }
    negotiateOptional();
    internAtoms(screenNumber);
    return {};
}

bool XConnection::negotiateRequired() {
    const auto* composite = xcb_get_extension_data(connection_, &xcb_composite_id);
    const auto* damage = xcb_get_extension_data(connection_, &xcb_damage_id);
    const auto* fixes = xcb_get_extension_data(connection_, &xcb_xfixes_id);
    const auto* shape = xcb_get_extension_data(connection_, &xcb_shape_id);
    for (const auto* each : {composite, damage, fixes, shape}) {
        if (each == nullptr || each->present == 0) {
            return false;
        }
    }
    events_.damage = damage->first_event;
    events_.fixes = fixes->first_event;
    events_.shape = shape->first_event;
    const auto askComposite = xcb_composite_query_version(connection_, 0, 4);
    const auto askDamage = xcb_damage_query_version(connection_, 1, 1);
    const auto askFixes = xcb_xfixes_query_version(connection_, 5, 0);
    const auto compositeVersion = take(xcb_composite_query_version_reply, connection_, askComposite);
    const auto damageVersion = take(xcb_damage_query_version_reply, connection_, askDamage);
    const auto fixesVersion = take(xcb_xfixes_query_version_reply, connection_, askFixes);
    return compositeVersion && damageVersion && fixesVersion && fixesVersion->major_version >= 2 &&
           (compositeVersion->major_version > 0 || compositeVersion->minor_version >= 2);
}

void XConnection::negotiateOptional() {
    const auto present = [this](xcb_extension_t& id) {
        const auto* data = xcb_get_extension_data(connection_, &id);
        return data != nullptr && data->present != 0 ? data : nullptr;
    };
    if (present(xcb_shm_id) != nullptr) {
        const auto version = take(xcb_shm_query_version_reply, connection_, xcb_shm_query_version(connection_));
        hasSharedMemory_ = version && (version->major_version > 1 || version->minor_version >= 2);
    }
    if (present(xcb_res_id) != nullptr) {
        const auto version = take(xcb_res_query_version_reply, connection_, xcb_res_query_version(connection_, 1, 2));
        hasClientIds_ = version && (version->server_major > 1 || version->server_minor >= 2);
    }
    if (const auto* randr = present(xcb_randr_id)) {
        const auto version =
            take(xcb_randr_query_version_reply, connection_, xcb_randr_query_version(connection_, 1, 5));
        const bool hasMonitors = version && (version->major_version > 1 || version->minor_version >= 5);
        events_.randr = hasMonitors ? randr->first_event : 0;
    }
    if (const auto* input = present(xcb_input_id)) {
        const auto version =
            take(xcb_input_xi_query_version_reply, connection_, xcb_input_xi_query_version(connection_, 2, 2));
        if (version && version->major_version >= 2) {
            inputOpcode_ = input->major_opcode;
        }
    }
}

void XConnection::internAtoms(int screenNumber) {
    const std::string manager = "_NET_WM_CM_S" + std::to_string(screenNumber);
    using Entry = std::pair<xcb_atom_t XAtoms::*, std::string_view>;
    const std::array<Entry, 7> names{{{&XAtoms::wmState, "WM_STATE"},
                                      {&XAtoms::wmOpacity, "_NET_WM_WINDOW_OPACITY"},
                                      {&XAtoms::wmPid, "_NET_WM_PID"},
                                      {&XAtoms::wmName, "_NET_WM_NAME"},
                                      {&XAtoms::utf8String, "UTF8_STRING"},
                                      {&XAtoms::rootPixmap, "_XROOTPMAP_ID"},
                                      {&XAtoms::compositingManager, manager}}};
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = names[i].second;
        cookies[i] = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto reply = take(xcb_intern_atom_reply, connection_, cookies[i]);
        atoms_.*names[i].first = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
}

} // namespace velmo::x11
