#pragma once

#include <string>

namespace kv408 {

/// The ways to an instrument.
enum class Way {
    serial_port, ///< the kernel's serial port
    library,     ///< the bridge library, which takes the whole USB device
    no_library   ///< the same, where the bridge library is there and cannot be used
};

/// Every USB device of this computer that could be the instrument, with what keeps the program from
/// reaching it over `way` and what cures that, in lines for a person to read; never empty. Looks
/// anew each time, changes nothing on any port. Not there on Windows.
[[nodiscard]] std::string usb_diagnosis(Way way);

} // namespace kv408
