#pragma once

#include <array>
#include <span>
#include <string_view>

#include "panel/adjust.h"
#include "panel/surroundings.h"
#include "panel/trigger.h"

namespace kv408 {

/// One entry of the time-base list.
struct TimeBaseRow {
    std::string_view text;        ///< entry text, "5ns/div"
    std::string_view short_label; ///< "5ns"
    double tbresolution;          ///< picoseconds per point, a whole number
    double samplerate;            ///< screen columns per second
    double hstretch;              ///< stretch step
    bool pointmode;               ///< point by point in place of block sweeps
};

/// The 21 entries in the order in which a text is looked up, from "25ps/div" to "100us/div"; the
/// list shows them the other way round, the slowest at index 0.
[[nodiscard]] std::span<const TimeBaseRow> time_base_rows();

/// The entry that is selected on `panel`; null while there is none.
[[nodiscard]] const TimeBaseRow* selected_time_base(const FrontPanel& panel);

/// The time-base list and what follows from it.
class TimeBase {
public:
    /// Connects the time-base list.
    TimeBase(const Surroundings& around, Trigger& trigger, Adjust& adjust);

    /// Fills the list with its 21 entries; nothing is selected.
    void fill_list();

    /// A time base was chosen.
    void seltimediv_Click();

private:
    void take_values(std::string_view text);
    void offer_horizontal_position();
    void withdraw_horizontal_position();

    Surroundings around_;
    Trigger& trigger_;
    Adjust& adjust_;
};

} // namespace kv408
