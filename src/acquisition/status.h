#pragma once

#include "panel/controls.h"
#include "state/colour.h"
#include "state/shared_texts.h"

namespace kv408 {

/// One acquisition status: what the status box says, and on which background.
struct Status {
    const char* text = "";
    Colour background = {};
};

/// Every status that the acquisition shows.
namespace status {
inline constexpr Status idle = {"Idle", rgb(255, 255, 192)};
inline constexpr Status stopped = {"Stopped", rgb(255, 192, 192)};
inline constexpr Status setup = {setup_text, rgb(192, 192, 255)};
inline constexpr Status running = {"Running", rgb(192, 255, 192)};
inline constexpr Status getting_data = {"Getting Data", rgb(255, 255, 192)};
inline constexpr Status waiting_for_trigger = {waiting_for_trigger_text, rgb(255, 224, 192)};
} // namespace status

/// Shows `shown` in the status box, which is left alone when it shows that already: every tick
/// tells its status.
inline void show_status(TextBox& textstatus, const Status& shown) {
    textstatus.set_back_colour(shown.background);
    if (textstatus.text() != shown.text) {
        textstatus.set_text(shown.text);
    }
}

} // namespace kv408
