#include "panel/panel_parts.h"

#include "panel/device_list.h"

namespace kv408 {

PanelParts::PanelParts(PanelState& state, const Outside& outside)
    : around{.panel = state.panel,
             .channels = state.channels,
             .trigger = state.trigger_state,
             .cursors = state.cursor_state,
             .time_base = state.time_base_state,
             .acquisition = state.acquisition,
             .link = outside.link,
             .clock = outside.clock,
             .boxes = outside.boxes,
             .messages = outside.messages,
             .screen = outside.screen,
             .measuring = outside.measuring} {
    outside.link.on_listing([&device = state.panel.device](const DeviceListing& listing) {
        show_devices(device, listing);
    });
}

} // namespace kv408
