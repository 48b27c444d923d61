// Any texts at all in the boxes that take typing: in the front panel, the settings dialog and the
// calibration form. Each line of the input is a key and the text that is typed: the key says into
// which box, and what the user does next. Built as settings_target.cpp.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "calibration/calibration_form.h"
#include "display/settings_dialog.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzzed_program.h"
#include "panel/delay_text.h"
#include "simulator/simulation.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr int most_lines = 64;
constexpr std::size_t single_boxes = 5; ///< boxes that are not one of a row

bool within(std::int64_t value, std::int64_t lowest, std::int64_t highest) {
    return value >= lowest && value <= highest;
}

/// The program on a simulated instrument, in the hands of someone who types.
class TypedRun {
public:
    TypedRun() {
        simulation_.set_calibrated();
        simulator::silence(simulation_.bench());
        demand(program_.scope.start(), "the program starts");
        ticks(2);
        act([this] { program_.scope.panel().mnucalibration.click(); });
        act([this] { program_.scope.panel().mnusettings.click(); });
    }

    void type(FuzzInput& input) {
        const std::size_t key = input.byte();
        TextBox& box = box_of(key % boxes());
        const std::string text = input.line();
        act([&] { box.focus(); });
        if (!box.enabled()) {
            return;
        }
        act([&] { box.set_text(text); });
        folder_typed_ |= &box == &program_.scope.settings_dialog().controls().txtsnapshotpath;
        follow_up(box, key / boxes());
        demand_ranges();
    }

    /// What is uploaded, written and saved after all the typing.
    void finish() {
        for (std::size_t index = 0; index < boxes(); ++index) {
            act([&] { box_of(index).leave(); });
        }
        act([this] { program_.scope.settings_dialog().controls().cmdok.click(); });
        act([this] { program_.scope.panel().cmdstartsweep.click(); });
        ticks(5);
        demand_ranges();
        demand_uploaded();
        demand_record();
        demand(program_.boxes.shown.empty(), "no message while every frame is acknowledged");
        if (folder_typed_) {
            act([this] { program_.scope.panel().snapshot.click(); });
        }
        program_.scope.close();
        demand_restored();
    }

private:
    void act(const std::function<void()>& action) { program_.scope.act(action); }

    void ticks(int count) {
        for (int tick = 0; tick < count; ++tick) {
            program_.tick();
        }
    }

    [[nodiscard]] std::size_t boxes() {
        return single_boxes + colour_components + form().cald.size();
    }

    CalibrationForm& form() { return program_.scope.calibration_form(); }

    TextBox& box_of(std::size_t index) {
        FrontPanel& panel = program_.scope.panel();
        SettingsControls& dialog = program_.scope.settings_dialog().controls();
        const std::array<TextBox*, single_boxes> single = {
            &panel.trtout, &panel.delaytrttdis, &panel.channel[0].psofset,
            &panel.channel[1].psofset, &dialog.txtsnapshotpath};
        if (index < single.size()) {
            return *single[index];
        }
        index -= single.size();
        return index < dialog.txtrgb.size() ? dialog.txtrgb[index]
                                            : form().cald.at(index - dialog.txtrgb.size());
    }

    void follow_up(TextBox& box, std::size_t what) {
        FrontPanel& panel = program_.scope.panel();
        switch (what) {
        case 1:
            return act([&] { box.leave(); });
        case 2:
            return act([&] { box.enter(); });
        case 3:
            return ticks(1);
        case 4:
            return act([&] { panel.trigsource.set_index(1 - panel.trigsource.index()); });
        case 5:
            return act([&] { panel.cmdstartsweep.click(); });
        case 6:
            return act([this] { program_.scope.calibration_form().cmdwritecal.click(); });
        case 7:
            return choose_time_base();
        default:
            return;
        }
    }

    /// The next of the time bases of block mode and the fastest with points one by one.
    void choose_time_base() {
        constexpr int first = 6;
        ListBox& list = program_.scope.panel().seltimediv;
        const int next = list.index() + 1;
        act([&] { list.set_index(next < static_cast<int>(list.entries().size()) ? next : first); });
    }

    void demand_ranges() {
        demand_sane_acquisition(program_);
        const Parts& parts = program_.scope.parts();
        for (const Slider& slider : program_.scope.settings_dialog().controls().slrgb) {
            demand(within(slider.value(), 0, 255), "a component of a colour has eight bits");
        }
        for (std::size_t index = 0; index < parts.channels.size(); ++index) {
            const TextBox& box = parts.panel.channel[index].psofset;
            demand(within(delay_of(box, parts.channels[index]), 0, 65535),
                   "a delay has sixteen bits");
            demand(box.faulty() == !typed_delay(box.text()), "what is no delay is marked");
        }
        for (const std::int32_t value : parts.frmcalibration.record().edited()) {
            demand(within(value, -32768, 32767), "a value of the record has sixteen bits");
        }
        demand(within(parts.panel.ltp2.marked().value(), 0, 640), "the marker stays at the plot");
        const ThumbWheel& wheel = parts.panel.slider1;
        demand(within(wheel.Value(), wheel.Min(), wheel.Max()), "the wheel stays in its range");
    }

    void demand_uploaded() {
        const simulator::Settings& sent = simulation_.settings();
        const FrontPanel& panel = program_.scope.panel();
        constexpr Byte set_trigger_timeout = 27;
        for (const simulator::WireFrame& frame : log_.frames) {
            demand(frame.command.code != set_trigger_timeout ||
                       simulator::word_argument(frame.command, 0) >= 10,
                   "the time-out is a legal one");
        }
        for (std::size_t index = 0; index < 2; ++index) {
            const TextBox& box = panel.channel[index].psofset;
            demand(delay_of(box, program_.scope.parts().channels.at(index)) ==
                       sent.offset_ps.at(index),
                   "the delay in use is the one in the instrument");
            demand(box.faulty() || box.text() == std::to_string(sent.offset_ps.at(index)),
                   "the delay in the box is the one in the instrument");
            demand(within(sent.offset_ps.at(index), 0, 65535), "the delay is a legal one");
        }
    }

    /// Written while the boxes hold values only, the record in the flash is the edited one.
    void demand_record() {
        if (!form().cmdwritecal.enabled()) {
            return;
        }
        act([this] { form().cmdwritecal.click(); });
        const CalibrationRecord& edited = program_.scope.parts().frmcalibration.record().edited();
        for (std::size_t index = 0; index < edited.size(); ++index) {
            demand(simulation_.flash().record(static_cast<std::uint16_t>(index)) ==
                       edited.at(index),
                   "the record in the flash is the one in the boxes");
        }
    }

    /// A new program finds the settings as they were left.
    void demand_restored() {
        const std::string saved = program_.files.files[FuzzedProgram::settings_path];
        VirtualClock clock;
        simulator::Simulation simulation{clock};
        FuzzedProgram again(clock, simulation.bridge(), saved);
        demand(again.scope.start(), "the program starts again");
        demand(again.boxes.shown.empty(), "what was typed is saved so that it can be read");
        again.scope.close();
        demand(again.files.files[FuzzedProgram::settings_path] == saved,
               "what was typed is restored as it was saved");
    }

    VirtualClock clock_;
    simulator::WireLog log_;
    simulator::Simulation simulation_{clock_, {}, 1, &log_};
    FuzzedProgram program_{clock_, simulation_.bridge()};
    bool folder_typed_ = false; ///< only then is drawing a snapshot worth its time
};

} // namespace
} // namespace kv408

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kv408::FuzzInput input(std::span(data, size));
    kv408::TypedRun run;
    for (int line = 0; line < kv408::most_lines && !input.empty(); ++line) {
        run.type(input);
    }
    run.finish();
    return 0;
}
