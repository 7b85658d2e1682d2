#include "platform/x11/internal/CaptureSource.h"

#include "platform/x11/internal/WindowOwners.h"

#include <xcb/randr.h>

#include <utility>

namespace velmo::x11 {

Result<std::unique_ptr<CaptureSource>> CaptureSource::create(XConnection& connection, const ContentFilter& filter) {
    if (const auto window = filter.asWindow()) {
        if (!topLevelWindow(connection, *window)) {
            return Error{kStreamErrorDomain, kStreamErrorFailedToStart,
                         "No se encontró la ventana que se quería grabar."};
        }
        auto composer = std::make_unique<WindowComposer>(connection, *window);
        return std::unique_ptr<CaptureSource>(new CaptureSource(connection, std::nullopt, std::move(composer)));
    }
    const auto& display = filter.asDisplay();
    const auto monitor = display ? findMonitor(queryMonitors(connection), display->displayID) : std::nullopt;
    if (!monitor) {
        return Error{kStreamErrorDomain, kStreamErrorNoDisplay, "No se encontró la pantalla."};
    }
    auto composer = std::make_unique<WindowComposer>(
        connection, monitor->frame, Exclusion{display->excludedProcessIDs, display->exceptedWindowIDs});
    return std::unique_ptr<CaptureSource>(new CaptureSource(connection, monitor, std::move(composer)));
}

Result<void> CaptureSource::begin() {
    if (monitor_ && connection_.hasRandr()) {
        xcb_randr_select_input(connection_.xcb(), connection_.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
        layoutChanged_ = true; // it may have changed before the events were asked for
    }
    return composer_->begin();
}

bool CaptureSource::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    const int randr = connection_.events().randr;
    if (randr != 0 && (type == randr + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randr + XCB_RANDR_NOTIFY)) {
        layoutChanged_ = true;
        return false;
    }
    return composer_->handle(event);
}

std::optional<Error> CaptureSource::ended() {
    if (connection_.lost()) {
        return Error{kStreamErrorDomain, kStreamErrorSourceGone, "Se perdió la conexión con el servidor gráfico."};
    }
    if (!monitor_ || !std::exchange(layoutChanged_, false)) {
        return std::nullopt;
    }
    const auto now = findMonitor(queryMonitors(connection_), monitor_->displayID);
    if (connection_.lost()) {
        return Error{kStreamErrorDomain, kStreamErrorSourceGone, "Se perdió la conexión con el servidor gráfico."};
    }
    if (!now) {
        return Error{kStreamErrorDomain, kStreamErrorSourceGone, "Se desconectó la pantalla que se estaba grabando."};
    }
    if (now->frame != monitor_->frame) {
        return Error{kStreamErrorDomain, kStreamErrorSourceGone,
                     "Cambió la resolución o el lugar de la pantalla que se estaba grabando."};
    }
    return std::nullopt;
}

} // namespace velmo::x11
