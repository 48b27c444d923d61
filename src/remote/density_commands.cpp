#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "remote/panel_settings.h"
#include "remote/replies.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "state/rounding.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> palette_choices{"CIVidis", "CHANnel"};

DensityControls& controls_of(const Instrument& instrument) {
    return instrument.scope().tools().density().controls();
}

/// A check box of the density window.
using BoxOf = std::function<CheckBox&(DensityControls&, const Call&)>;

/// Its command; nothing is pressed where it is as it is to be.
Command box_command(std::string header, Instrument& instrument, const BoxOf& box) {
    return boolean_setting(
        std::move(header),
        [&instrument, box](const Call& call, bool on) {
            instrument.act(call.client, [&](Scope& scope) {
                CheckBox& pressed = box(scope.tools().density().controls(), call);
                if (pressed.checked() != on) {
                    pressed.press(on);
                }
            });
        },
        [&instrument, box](const Call& call) {
            return box(controls_of(instrument), call).checked();
        });
}

Command half_life_command(Instrument& instrument) {
    NumberSetting setting{{0, DensityCollector::longest_half_life, 0}, {}, {}};
    setting.set = [&instrument](const Call& call, double sweeps) {
        const int whole = round_to_int32(sweeps);
        instrument.act(call.client, [whole](Scope& scope) {
            scope.tools().density().controls().txtDensityHalfLife.set_text(
                whole == 0 ? "" : std::to_string(whole));
        });
    };
    setting.get = [&instrument](const Call&) {
        return static_cast<double>(
            half_life_in(controls_of(instrument).txtDensityHalfLife.text()).value_or(0));
    };
    return whole_setting("DENSity:HALFlife", setting);
}

Command palette_command(Instrument& instrument) {
    return choice_setting(
        "DENSity:PALette", palette_choices,
        [&instrument](const Call& call, std::size_t index) {
            instrument.act(call.client, [index](Scope& scope) {
                scope.tools().density().controls().cmbDensityPalette.set_index(
                    static_cast<int>(index));
            });
        },
        [&instrument](const Call&) {
            return static_cast<std::size_t>(controls_of(instrument).cmbDensityPalette.index());
        });
}

/// What was collected of the channel that the header names. Throws `Refused` where there is none.
const Collected& collected_of(const Instrument& instrument, const Call& call) {
    const Collected* const collected =
        instrument.parts().tools.density().collected(channel_of(call));
    if (collected == nullptr) {
        throw Refused{ScpiError::data_stale, "Nothing was collected of the channel"};
    }
    return *collected;
}

std::string preamble(const Collected& collected) {
    const MeasuredWith& with = collected.with;
    const std::array<std::string, 8> fields{
        whole_reply(collected.counts.points()),
        whole_reply(scale_codes),
        real_reply(with.time_per_point / picoseconds_per_second),
        real_reply(with.first_time / picoseconds_per_second),
        real_reply(level_step(with) / millivolts_per_volt),
        real_reply(level_at(with, 0) / millivolts_per_volt),
        real_reply(collected.weight),
        whole_reply(static_cast<std::int64_t>(collected.averaged))};
    std::string answer;
    for (const std::string& field : fields) {
        add_item(answer, field);
    }
    return answer;
}

/// The most points whose counters one answer may hold: 3.3 MB.
constexpr int most_points = 200;

/// The counters of the points that `call` names by the first of them and their number, as a block.
std::string counts(const Collected& collected, const Call& call) {
    const int points = collected.counts.points();
    const int first = whole_of(call.parameters.at(0), {0.0, points - 1.0, 0.0});
    const double left = std::min(points - first, most_points);
    const int end = first + whole_of(call.parameters.at(1), {1.0, left, left});
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(end - first) * scale_codes * sizeof(std::uint32_t));
    for (int point = first; point < end; ++point) {
        for (const std::uint32_t count : collected.counts.at(point)) {
            add_bytes(bytes, count, call.client.waveform.least_first);
        }
    }
    return block_reply(bytes);
}

} // namespace

std::vector<Command> density_commands(Instrument& instrument) {
    Command clear{"DENSity:CLEar"};
    clear.act = [&instrument](const Call& call) {
        instrument.act(call.client, [](Scope& scope) {
            scope.tools().density().controls().cmdDensityClear.click();
        });
    };
    Command counters{"DENSity:COUNts<n>"};
    counters.answer = [&instrument](const Call& call) {
        return counts(collected_of(instrument, call), call);
    };
    counters.query_takes = {2, 2};
    counters.value = "first point, from 0, and how many: 1 to " + std::to_string(most_points);
    return {
        box_command("DENSity:STATe", instrument,
                    [](DensityControls& controls, const Call&) -> CheckBox& {
                        return controls.chkDensity;
                    }),
        box_command("DENSity:CHANnel<n>", instrument,
                    [](DensityControls& controls, const Call& call) -> CheckBox& {
                        return controls.channel.at(channel_of(call));
                    }),
        box_command("DENSity:FREeze", instrument,
                    [](DensityControls& controls, const Call&) -> CheckBox& {
                        return controls.chkDensityFreeze;
                    }),
        clear,
        half_life_command(instrument),
        palette_command(instrument),
        query_command("DENSity:SWEeps<n>",
                      [&instrument](const Call& call) {
                          const Collected* const collected =
                              instrument.parts().tools.density().collected(channel_of(call));
                          return whole_reply(static_cast<std::int64_t>(
                              collected == nullptr ? 0 : collected->sweeps));
                      }),
        query_command("DENSity:SATurated<n>",
                      [&instrument](const Call& call) {
                          return boolean_reply(collected_of(instrument, call).counts.saturated());
                      }),
        query_command(
            "DENSity:PREamble<n>",
            [&instrument](const Call& call) { return preamble(collected_of(instrument, call)); }),
        counters,
    };
}

} // namespace kv408
