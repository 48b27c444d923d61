// Any answers at all of the bridge, to the whole program: start-up, block sweeps, point passes,
// calibration, and a user who presses buttons meanwhile. Built as settings_target.cpp.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "calibration/calibration_form.h"
#include "fuzz/fuzzed_program.h"
#include "fuzz/scripted_bridge.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

/// One set-up (two gains with a wait of 4 s before each, trigger, time base) takes less than 30 s
/// when nothing answers, start-up with two retries less than 35 s, everything else less than both.
constexpr milliseconds longest_action{40000};
/// Each of the 1280 points of a pass may come just before its time-out.
constexpr milliseconds longest_pass = 1280 * milliseconds(1001);
/// A pass takes two operations per point.
constexpr int most_operations = 3000;
constexpr int most_actions = 40;

/// True when `text` is one of those that the link and the set-up tell.
bool is_known(const std::string& text) {
    constexpr std::array whole = {
        "Error finding WKTP2B device. Aborting application.",
        "Error finding USB device. Aborting application.",
        "ERROR!!! No attached device is found!!!",
        "error seting baud rate",
        "Error Sending Data.",
        "Buffer(0) <> 6",
        "No connection to Device, maybe it's not powered. Please check and click <Retry>!",
        "error set triger",
        "Error setting scope",
        "Error Vold/div set",
        "Scope not running!",
        "Make sure that trigger signal is present and Sampler inputs are disconnected or 0V",
        "Sampled data is out of range, make sure that trigger signal is present and Sampler inputs "
        "are disconnected or 0V"};
    constexpr std::array labels = {" SETTRIG ",
                                   " SETTTO ",
                                   "_SET AMP GAIN_",
                                   " SET AMP GAIN ",
                                   " set time base offset ch1 ",
                                   " set time base offset ch2 ",
                                   " set time base resolution ",
                                   " CALDELPS"};
    return std::find(whole.begin(), whole.end(), text) != whole.end() ||
           text.starts_with("Error opening device: ") ||
           std::any_of(labels.begin(), labels.end(), [&](const std::string& label) {
               return text == label + "CommError" || text == label + "Comm timed out";
           });
}

/// The program in the hands of someone whom the input tells what to do.
class Run {
public:
    explicit Run(FuzzInput& input) : input_(input), bridge_(clock_, input) {
        program_.boxes.on_show = [this](const Message& message) {
            demand(!message.title.empty() || is_known(message.text), "the message is a given one");
            program_.boxes.answers = {answer(message.buttons)};
        };
    }

    void all() {
        timed([this] { program_.scope.start(); });
        for (int action = 0; action < most_actions && !program_.scope.ended(); ++action) {
            if (input_.empty() && action > 5) {
                break;
            }
            timed([this] { do_next(); });
        }
        program_.scope.close();
        demand(program_.scope.ended(), "the program can always be ended");
        demand(bridge_.opened <= 0, "no device is left open");
    }

private:
    /// Agrees to everything, but to try again only twice.
    MessageAnswer answer(MessageButtons buttons) {
        switch (buttons) {
        case MessageButtons::retry_cancel:
            return ++asked_ <= 2 ? MessageAnswer::retry : MessageAnswer::cancel;
        case MessageButtons::yes_no:
            return MessageAnswer::yes;
        default:
            return MessageAnswer::ok;
        }
    }

    /// Runs `action` and holds it to its promises.
    template <typename Action>
    void timed(Action action) {
        const bool pass = program_.scope.parts().acquisition.pointmode;
        const auto before = clock_.now();
        bridge_.operations = 0;
        action();
        demand(clock_.now() - before <= (pass ? longest_pass : longest_action),
               "no action takes longer than its time-outs");
        demand(bridge_.operations <= most_operations, "no action asks the bridge without end");
        demand_sane_acquisition(program_);
    }

    void do_next() {
        constexpr std::uint8_t first_button = 0x80;
        const std::uint8_t choice = input_.byte();
        if (choice < first_button) {
            program_.tick();
        } else {
            program_.scope.act([&] { press(choice - first_button); });
        }
    }

    void press(int choice) {
        FrontPanel& panel = program_.scope.panel();
        CalibrationForm& form = program_.scope.calibration_form();
        const std::array buttons = {
            &panel.cmdstartsweep,     &panel.cmdstop,          &panel.mnucalibration,
            &form.cmdreadcald,        &form.cmdwritecal,       &form.cmdcalint,
            &form.cmdcalstop,         &form.cmdsetforcalgainh, &form.cmdcalgain1h,
            &form.cmdsetforcall,      &form.cmdcaoffsetl,      &form.cmdsetforcalhscale,
            &form.cmdcaltb,           &form.cmdsetforcalh,     &form.cmdcaoffseth,
            &form.cmdsetforcalgainl2, &form.cmdcalg2l,         &form.cmdsetalltodefault};
        const std::array boxes = {&panel.channel[0].enable,
                                  &panel.channel[1].enable,
                                  &panel.channel[0].invert,
                                  &panel.channel[1].invert,
                                  &panel.average,
                                  &panel.adcspeed,
                                  &panel.channel[0].inviatr,
                                  &panel.channel[1].inviatr,
                                  &panel.cmdcaloofset};
        const std::array lists = {&panel.seltimediv, &panel.channel[0].vdiv, &panel.channel[1].vdiv,
                                  &panel.trigsource, &panel.trigeredge};
        const auto index = static_cast<std::size_t>(choice);
        if (index < buttons.size()) {
            buttons[index]->click();
        } else if (index < buttons.size() + boxes.size()) {
            CheckBox& box = *boxes[index - buttons.size()];
            box.set_checked(!box.checked());
        } else {
            ListBox& list = *lists[index % lists.size()];
            list.set_index(static_cast<int>(input_.below(list.entries().size())));
        }
    }

    FuzzInput& input_;
    VirtualClock clock_;
    ScriptedBridge bridge_;
    FuzzedProgram program_{clock_, bridge_};
    int asked_ = 0;
};

} // namespace
} // namespace kv408

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kv408::FuzzInput input(std::span(data, size));
    kv408::Run(input).all();
    return 0;
}
