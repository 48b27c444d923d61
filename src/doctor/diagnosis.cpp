#include "doctor/diagnosis.h"

#include <algorithm>
#include <sstream>

#include "host/shown_text.h"
#include "link/instrument_serial.h"
#ifndef _WIN32
#include "doctor/posix/usb_diagnosis.h"
#endif

namespace kv408 {
namespace {

std::string listed_devices(const BridgeChoice& choice) {
    constexpr std::uint32_t most_listed =
        100; // more than USB has room for: such a count is not to be believed
    std::ostringstream text;
    text << "The bridge library " << choice.library << " is used. ";
    const auto [status, count] = choice.bridge->count_devices();
    if (status != bridge_success) {
        text << "It cannot count its devices: it fails with status " << status << ".\n";
        return text.str();
    }
    text << "Devices that it lists: " << count << ".\n";
    for (std::uint32_t index = 0; index < std::min(count, most_listed); ++index) {
        const auto [told, serial] = choice.bridge->serial_number(index);
        text << "Serial number " << (told == bridge_success ? shown_line(serial) : "unreadable")
             << ": " << (is_instrument(serial) ? "an instrument.\n" : "no instrument.\n");
    }
    return text.str();
}

std::string of_library(const BridgeChoice& choice) {
    const std::string trouble = choice.bridge->trouble();
    std::string text = trouble.empty() ? listed_devices(choice) : trouble + "\n";
#ifndef _WIN32
    if (!trouble.empty()) {
        text.append("As long as it is there, the kernel's serial ports are not used.\n");
    }
    text.append("\n").append(usb_diagnosis(trouble.empty() ? Way::library : Way::no_library));
#endif
    return text;
}

#ifndef _WIN32
std::string of_serial_port(const BridgeChoice& choice) {
    return std::string("The bridge library ") + bridge_library_name +
           " is not there: the kernel's serial ports are used in its place.\n" +
           (choice.loaders_words.empty() ? "" : "The system says: " + choice.loaders_words + "\n") +
           "\n" + usb_diagnosis(Way::serial_port);
}
#endif

} // namespace

std::string diagnosis(const BridgeChoice& choice) {
#ifndef _WIN32
    if (choice.serial) {
        return of_serial_port(choice);
    }
#endif
    return of_library(choice);
}

} // namespace kv408
