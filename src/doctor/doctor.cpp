#include "doctor/doctor.h"

#include <ostream>
#include <string>

#include "host/message_boxes.h"
#include "host/shown_text.h"
#include "link/device_link.h"
#include "state/program_state.h"

namespace kv408 {
namespace {

constexpr const char* help_text =
    "Usage: kv408-doctor\n"
    "\n"
    "Lists every device of this computer that could be the oscilloscope, with what keeps kv408 "
    "from\n"
    "reaching it and what cures that. Then opens the oscilloscope as kv408 does and asks whether "
    "it\n"
    "is there. Over the serial port a kv408 that is running is not disturbed; with the bridge "
    "library\n"
    "close it first.\n"
    "\n"
    "  --help  shows this text\n"
    "\n"
    "Exit code: 0 an oscilloscope answers, 1 none answers, 2 wrong use. After this help: 0.\n";

/// Message boxes as lines of a terminal, where nobody is asked anything.
class TerminalBoxes : public MessageBoxes {
public:
    explicit TerminalBoxes(std::ostream& out) : out_(out) {}

    MessageAnswer show(const Message& message) override {
        // The details have been written before.
        out_ << shown_lines(message.text) << '\n';
        if (!message.informative.empty()) {
            out_ << shown_lines(message.informative) << '\n';
        }
        return message.buttons == MessageButtons::ok ? MessageAnswer::ok : MessageAnswer::cancel;
    }

private:
    std::ostream& out_;
};

/// What the check of an instrument comes to.
enum class Check { not_opened, silent, wrong_answer, answers };

/// Opens an instrument over `link` and sends it the check frame.
Check open_and_check(DeviceLink& link) {
    try {
        link.finddevice();
        if (!link.select_and_open()) {
            return Check::not_opened;
        }
        link.set_link_speed();
        if (link.checkdevice()) {
            return Check::answers;
        }
        // A device that stayed silent has been closed.
        const bool answered = link.state().open && link.state().commstatus == bridge_success;
        return answered ? Check::wrong_answer : Check::silent;
    } catch (const ProgramEnded&) {
        return link.state().devfound ? Check::silent : Check::not_opened;
    }
}

/// The last line: what the check of the instrument with this serial number came to.
std::string outcome_of(Check check, const std::string& serial) {
    const std::string name = shown_line(serial);
    switch (check) {
    case Check::answers:
        return "The instrument " + name + " answers.";
    case Check::wrong_answer:
        return "The instrument " + name +
               " gave a wrong answer: close every other program that uses it, then unplug it and "
               "plug it in again.";
    case Check::silent:
        return "The instrument " + name + " does not answer: check its power.";
    default:
        return "No instrument answers.";
    }
}

} // namespace

DoctorResult answer_arguments(std::span<const char* const> arguments, std::ostream& out,
                              std::ostream& errors) {
    if (arguments.size() == 1 && std::string_view(arguments[0]) == "--help") {
        out << help_text;
        return DoctorResult::answers;
    }
    errors << "kv408-doctor takes no arguments but --help.\n";
    return DoctorResult::wrong_use;
}

DoctorResult examine(Bridge& bridge, const Diagnose& diagnose, Clock& clock, std::ostream& out) {
    // The check may take seconds; until then this is to be read.
    out << shown_lines(diagnose()) << std::endl;
    TerminalBoxes boxes(out);
    ProgramState program;
    DeviceLink link(bridge, clock, boxes, program);
    const Check check = open_and_check(link);
    link.close();
    out << outcome_of(check, link.state().devices.serial()) << '\n';
    return check == Check::answers ? DoctorResult::answers : DoctorResult::no_answer;
}

} // namespace kv408
