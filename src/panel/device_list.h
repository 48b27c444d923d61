#pragma once

#include "link/device_link.h"
#include "panel/controls.h"

namespace kv408 {

/// Shows the devices of `listing` in the list `device`: their serial numbers, which one is selected
/// and whether another may be.
inline void show_devices(ListBox& device, const DeviceListing& listing) {
    device.set_entries(listing.serials);
    device.set_index(listing.selected);
    device.set_enabled(listing.selectable);
}

} // namespace kv408
