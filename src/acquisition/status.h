#pragma once

#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/colour.h"

namespace kv408 {

/// One acquisition status: what the status box says, and on which background.
struct Status {
    Activity activity = Activity::none;
    const char* text = "";
    Colour background = {};
};

/// Every status that the acquisition shows.
namespace status {
inline constexpr Status idle = {Activity::idle, "Idle", rgb(255, 255, 192)};
inline constexpr Status stopped = {Activity::stopped, "Stopped", rgb(255, 192, 192)};
inline constexpr Status setup = {Activity::set_up, "Setup...", rgb(192, 192, 255)};
inline constexpr Status running = {Activity::running, "Running", rgb(192, 255, 192)};
inline constexpr Status getting_data = {Activity::getting_data, "Getting Data", rgb(255, 255, 192)};
inline constexpr Status waiting_for_trigger = {Activity::waiting_for_trigger, "Waiting For TRIGGER",
                                               rgb(255, 224, 192)};
} // namespace status

/// Takes `shown` as what the acquisition is doing, and shows it in the status box, which is left
/// alone when it shows that already: every tick tells its status.
inline void show_status(FrontPanel& panel, AcquisitionState& acquisition, const Status& shown) {
    acquisition.activity = shown.activity;
    panel.textstatus.set_back_colour(shown.background);
    if (panel.textstatus.text() != shown.text) {
        panel.textstatus.set_text(shown.text);
    }
}

} // namespace kv408
