#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "maths/maths_trace.h"
#include "measure/curve_measurements.h"
#include "measure/measurement_rows.h"
#include "remote/choices.h"
#include "remote/client.h"
#include "remote/instrument.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 9> function_choices{"OFF",       "ADD",     "SUBTract",
                                                           "MULTiply",  "NEGate",  "DIFFerentiate",
                                                           "INTegrate", "AVERage", "ENVelope"};

constexpr double no_maths_number = std::numeric_limits<double>::quiet_NaN();

/// The place, 0 or 1, that the header names.
std::size_t place_of(const Call& call) {
    return static_cast<std::size_t>(call.suffixes.front() - 1);
}

/// Commands about the trace that the header names, as its user operates it.
class MathsCommands {
public:
    explicit MathsCommands(Instrument& instrument) : instrument_(instrument) {}

    /// One of its lists.
    [[nodiscard]] Command list(std::string header, std::span<const std::string_view> choices,
                               ListBox MathsControls::*list) const {
        return choice_setting(
            std::move(header), choices,
            [self = *this, list](const Call& call, std::size_t index) {
                self.act(call, [list, index](MathsTool& tool) {
                    (tool.controls().*list).set_index(static_cast<int>(index));
                });
            },
            [self = *this, list](const Call& call) {
                return static_cast<std::size_t>((self.tool(call).controls().*list).index());
            });
    }

    /// One of its boxes with a real number.
    [[nodiscard]] Command type(std::string header, const NumberRange& range,
                               TextBox MathsControls::*box,
                               double (MathsTool::*get)() const) const {
        return real_setting(std::move(header), typing(range, box, [get](const MathsTool& tool) {
                                return (tool.*get)();
                            }));
    }

    /// The number of sweeps.
    [[nodiscard]] Command count() const {
        return whole_setting("MATH<n>:COUNt",
                             typing({1.0, static_cast<double>(MathsEvaluator::most_sweeps), 16.0},
                                    &MathsControls::txtMathsCount, [](const MathsTool& tool) {
                                        return static_cast<double>(tool.kept());
                                    }));
    }

    /// Whether a box is empty; off types what is found now.
    [[nodiscard]] Command automatic(std::string header, TextBox MathsControls::*box,
                                    double (MathsTool::*get)() const) const {
        return boolean_setting(
            std::move(header),
            [self = *this, box, get](const Call& call, bool on) {
                self.act(call, [box, get, on](MathsTool& tool) {
                    (tool.controls().*box).set_text(on ? "" : typed_number((tool.*get)()));
                });
            },
            [self = *this, box](const Call& call) {
                return (self.tool(call).controls().*box).text().empty();
            });
    }

    [[nodiscard]] Command begin_anew() const {
        return {"MATH<n>:CLEar", [self = *this](const Call& call) {
                    self.act(call, [](MathsTool& tool) { tool.controls().cmdMathsClear.click(); });
                }};
    }

    /// Keeps the trace as the reference that the parameter names.
    [[nodiscard]] Command keep() const {
        Command command{"MATH<n>:REFerence"};
        command.act = [self = *this](const Call& call) {
            const auto number = whole_of(call.parameters.front(),
                                         {1.0, static_cast<double>(References::count), 1.0});
            (void)self.with_trace(call);
            self.instrument_.act(call.client, [&call, number](Scope& scope) {
                ReferenceControls& controls =
                    scope.tools().references().controls(static_cast<std::size_t>(number - 1));
                (place_of(call) == 0 ? controls.mnuReferenceKeepMATH1
                                     : controls.mnuReferenceKeepMATH2)
                    .click();
            });
        };
        command.takes = {1, 1};
        command.value = "1 to " + std::to_string(References::count);
        return command;
    }

    /// A query about the trace that the client's line is about; an error without one.
    template <typename Answer>
    [[nodiscard]] Command reply(std::string header, Answer answer) const {
        return query_command(std::move(header), [self = *this, answer](const Call& call) {
            const auto trace = self.trace_of(call);
            if constexpr (std::is_invocable_v<Answer, const MathsTrace&>) {
                return answer(*trace);
            } else {
                return answer(*trace, call.client);
            }
        });
    }

    /// The number of the last sweep in that trace.
    [[nodiscard]] Command sequence() const {
        return query_command("MATH<n>:SEQuence", [self = *this](const Call& call) {
            (void)self.trace_of(call);
            return whole_reply(
                static_cast<std::int64_t>(self.instrument_.sweep_of(call.client).number));
        });
    }

private:
    [[nodiscard]] const MathsTool& tool(const Call& call) const {
        return instrument_.scope().tools().maths().tool(place_of(call));
    }

    [[nodiscard]] const MathsTool& with_trace(const Call& call) const {
        const MathsTool& found = tool(call);
        if (!found.is_on()) {
            throw Refused{ScpiError::settings_conflict, found.name() + " is off"};
        }
        if (!found.trace()) {
            throw Refused{ScpiError::data_stale, found.reason()};
        }
        return found;
    }

    /// The trace as it was with the sweep of the client's line.
    [[nodiscard]] std::shared_ptr<const MathsTrace> trace_of(const Call& call) const {
        const MathsTool& found = with_trace(call);
        auto now = found.trace();
        const MeasuredSweep& line = instrument_.sweep_of(call.client);
        if (now->sweep == line.sweep->number) {
            return now;
        }
        const auto& then = line.maths.at(place_of(call));
        if (!then || then->definition != now->definition) {
            throw Refused{ScpiError::data_stale, found.name() + " is of a later sweep"};
        }
        return then;
    }

    template <typename Get>
    [[nodiscard]] NumberSetting typing(const NumberRange& range, TextBox MathsControls::*box,
                                       Get get) const {
        NumberSetting setting{range, {}, {}};
        setting.set = [self = *this, box](const Call& call, double value) {
            self.act(call, [box, value](MathsTool& tool) {
                (tool.controls().*box).set_text(typed_number(value));
            });
        };
        setting.get = [self = *this, get](const Call& call) { return get(self.tool(call)); };
        return setting;
    }

    template <typename Action>
    void act(const Call& call, const Action& action) const {
        instrument_.act(call.client,
                        [&](Scope& scope) { action(scope.tools().maths().tool(place_of(call))); });
        call.client.line_sweep.reset(); // it is computed anew, of the last sweep
    }

    Instrument& instrument_;
};

std::string maths_preamble_reply(const MathsTrace& trace) {
    std::string answer = whole_reply(static_cast<std::int64_t>(trace.values.size()));
    add_item(answer, whole_reply(static_cast<std::int64_t>(trace.sweeps)));
    add_item(answer, real_reply(trace.time_per_point / picoseconds_per_second));
    add_item(answer, real_reply(trace.first_time / picoseconds_per_second));
    add_item(answer, string_reply(unit_name(trace.definition.unit())));
    add_item(answer, string_reply(trace.definition.label()));
    return answer;
}

/// As the client wants its sweeps: a block of 64-bit numbers, or numbers with commas; without any
/// an empty block, or 9.91E+37.
std::string points_reply(const std::vector<double>& values, const Client& client) {
    std::string answer;
    if (client.waveform.format == ClientWaveform::Format::real) {
        for (const double value : values) {
            add_bytes(answer, std::bit_cast<std::uint64_t>(value), client.waveform.least_first);
        }
        return block_reply(answer);
    }
    for (const double value : values) {
        add_item(answer, real_reply(value));
    }
    return answer.empty() ? real_reply(no_maths_number) : answer;
}

std::string measurements_reply(const MathsTrace& trace) {
    const std::vector<double> columns = screen_columns(trace);
    std::vector<MeasuredValue> values(measurement_rows().size()); // none is known
    if (!columns.empty()) {
        values = curve_measurements(columns, trace.columns_per_second);
    }
    std::string answer;
    for (const MeasuredValue& measured : values) {
        add_item(answer, real_reply(measured.value.value_or(no_maths_number)));
    }
    return answer;
}

} // namespace

std::vector<Command> maths_commands(Instrument& instrument) {
    using Controls = MathsControls;
    const MathsCommands maths(instrument);
    constexpr double most = MathsTool::most_position;
    constexpr double greatest = MathsTool::greatest_scale;
    return {
        maths.list("MATH<n>:FUNCtion", function_choices, &Controls::cmbMathsFunction),
        maths.list("MATH<n>:SOURce:FIRSt", channel_choices, &Controls::cmbMathsA),
        maths.list("MATH<n>:SOURce:SECond", channel_choices, &Controls::cmbMathsB),
        maths.count(),
        maths.begin_anew(),
        maths.type("MATH<n>:SCALe", {1.0 / greatest, greatest, 0.1}, &Controls::txtMathsScale,
                   &MathsTool::per_division),
        maths.automatic("MATH<n>:SCALe:AUTO", &Controls::txtMathsScale, &MathsTool::per_division),
        maths.type("MATH<n>:POSition", {-most, most, 0.0}, &Controls::txtMathsPosition,
                   &MathsTool::position),
        maths.automatic("MATH<n>:POSition:AUTO", &Controls::txtMathsPosition, &MathsTool::position),
        maths.keep(),
        maths.sequence(),
        maths.reply("MATH<n>:PREamble", maths_preamble_reply),
        maths.reply("MATH<n>:DATA",
                    [](const MathsTrace& trace, const Client& client) {
                        return points_reply(trace.values, client);
                    }),
        maths.reply("MATH<n>:DATA:LOWer",
                    [](const MathsTrace& trace, const Client& client) {
                        return points_reply(trace.lowest, client);
                    }),
        maths.reply("MATH<n>:MEASure:ALL", measurements_reply),
    };
}

} // namespace kv408
