#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "panel/surroundings.h"
#include "state/channel_state.h"

namespace kv408 {

/// The vertical scale that a volts-per-division text stands for.
struct VerticalScale {
    std::int16_t gain; ///< `chNgain`: 1 high gain, 2 low gain
    double atten;      ///< `chNatten`: millivolts per code
    double scale; ///< `chNscale`: units of the plot per code, 512 divided by the codes of a full
                  ///< screen
    double mv_per_division;
};

/// The entries of the volts-per-division lists, the coarsest first: "0.5V" to "10mV".
[[nodiscard]] std::vector<std::string> volts_per_division();

/// The scale of `text`, one of "1V" (not offered by the list), "0.5V", "0.2V", "0.1V", "50mV",
/// "20mV", "10mV"; nothing for any other text.
[[nodiscard]] std::optional<VerticalScale> vertical_scale(std::string_view text);

/// `chNoffsetdac`: the code that the trace mapping puts on the centre row, 2048 less the distance
/// of `channel.pos` from the centre in codes, rounded halves to even and held within 16 bits.
[[nodiscard]] std::int16_t offset_code(const ChannelState& channel);

/// The volts-per-division lists, "Input Via Trigger", "Invert" and the channel enables.
class Vertical {
public:
    /// Connects the controls of the VERTICAL frame.
    explicit Vertical(const Surroundings& around);

    /// Fills both lists with their six entries; nothing is selected.
    void fill_lists();

    /// A volts-per-division entry of `channel` was chosen. Tells the instrument both gain
    /// ranges when the channel's range differs from the one that it last acknowledged, and in a
    /// set-up when it may have been off since.
    void vdiv_Click(Channel channel);

    /// "Invert" was clicked.
    void invert_Click(Channel channel);

    /// A channel was switched on or off.
    void enable_Click(Channel channel);

    /// Puts the zero-line marker of `channel` beside the channel's position.
    void place_marker(Channel channel);

private:
    bool set_scale(Channel channel);
    bool send_gain(Channel channel);
    void show_caption(Channel channel);

    Surroundings around_;
    /// The ranges that the instrument last acknowledged; 0 where a frame with another one was not.
    std::array<std::int16_t, 2> acknowledged_gain_ = {high_gain, high_gain};
};

} // namespace kv408
