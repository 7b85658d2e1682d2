#include "platform/x11/internal/ScrollAxes.h"

#include "platform/x11/internal/XReply.h"

#include <xcb/xinput.h>

namespace velmo::x11 {
namespace {

double number(xcb_input_fp3232_t value) {
    return value.integral + static_cast<double>(value.frac) / 4294967296.0;
}

std::optional<ScrollAxes::Axis> verticalAxis(const xcb_input_xi_device_info_t& device) {
    for (auto each = xcb_input_xi_device_info_classes_iterator(&device); each.rem > 0;
         xcb_input_device_class_next(&each)) {
        if (each.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL) {
            continue;
        }
        const auto& scroll = *reinterpret_cast<const xcb_input_scroll_class_t*>(each.data);
        const double increment = number(scroll.increment);
        if (scroll.scroll_type == XCB_INPUT_SCROLL_TYPE_VERTICAL && increment != 0) {
            return ScrollAxes::Axis{scroll.number, increment};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<ScrollAxes::Axis> ScrollAxes::of(std::uint16_t device) {
    const auto known = known_.find(device);
    if (known != known_.end()) {
        return known->second;
    }
    std::optional<Axis> axis;
    const auto reply =
        take(xcb_input_xi_query_device_reply, connection_, xcb_input_xi_query_device(connection_, device));
    if (reply) {
        const auto first = xcb_input_xi_query_device_infos_iterator(reply.get());
        axis = first.rem > 0 ? verticalAxis(*first.data) : std::nullopt;
    }
    known_[device] = axis;
    return axis;
}

} // namespace velmo::x11
