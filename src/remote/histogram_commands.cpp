#include <array>
#include <string>

#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"
#include "state/plot_geometry.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> histogram_choices{"LEVels", "TIMes"};

HistogramDialog& dialog_of(const Instrument& instrument) {
    return instrument.scope().tools().histogram();
}

Command window_command(Instrument& instrument) {
    Command command{"HISTogram:WINDow"};
    command.act = [&instrument](const Call& call) {
        const auto side = [&call](std::size_t index, int least, int most) {
            return whole_of(call.parameters.at(index),
                            {double(least), double(most), double(least)});
        };
        constexpr int room = HistogramDialog::least_side;
        PlotWindow window;
        window.left = side(0, 0, plot::width - room);
        window.top = side(1, 0, plot::height - room);
        window.right = side(2, window.left + room, plot::width);
        window.bottom = side(3, window.top + room, plot::height);
        instrument.act(call.client,
                       [window](Scope& scope) { scope.tools().histogram().set_window(window); });
    };
    command.takes = {4, 4};
    command.value = "left, top, right, bottom: 0 to " + std::to_string(plot::width) +
                    " across, 0 to " + std::to_string(plot::height) + " down";
    command.answer = [&instrument](const Call&) {
        const PlotWindow& window = dialog_of(instrument).window();
        std::string answer;
        for (const int side : {window.left, window.top, window.right, window.bottom}) {
            add_item(answer, whole_reply(side));
        }
        return answer;
    };
    return command;
}

/// The values of the window; throws `Refused` where nothing was hit.
std::string values(const Instrument& instrument) {
    const HistogramDialog& dialog = dialog_of(instrument);
    const auto statistics = dialog.statistics();
    if (!statistics) {
        throw Refused{ScpiError::data_stale, "Nothing was hit in the window"};
    }
    std::string answer;
    for (const double value : values_of(*statistics, dialog.of())) {
        add_item(answer, real_reply(value));
    }
    return answer;
}

std::string bins(const Instrument& instrument) {
    const HistogramDialog& dialog = dialog_of(instrument);
    const auto histogram = dialog.histogram();
    if (!histogram) {
        throw Refused{ScpiError::data_stale, "There is no density of the channel"};
    }
    const double unit =
        dialog.of() == HistogramOf::levels ? millivolts_per_volt : picoseconds_per_second;
    std::string answer = real_reply(histogram->first / unit);
    add_item(answer, real_reply(histogram->step / unit));
    for (const double hits : histogram->hits) {
        add_item(answer, real_reply(hits));
    }
    return answer;
}

} // namespace

std::vector<Command> histogram_commands(Instrument& instrument) {
    const ToolCommands<HistogramDialog> window(instrument, &Tools::histogram);
    return {
        window.state("HISTogram:STATe"),
        window.list("HISTogram:SOURce", channel_choices, &HistogramControls::cmbHistogramChannel),
        window.list("HISTogram:OF", histogram_choices, &HistogramControls::cmbHistogramOf),
        window_command(instrument),
        query_command("HISTogram:DATA", [&instrument](const Call&) { return values(instrument); }),
        query_command("HISTogram:BINS", [&instrument](const Call&) { return bins(instrument); }),
    };
}

} // namespace kv408
