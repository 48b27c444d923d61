#include "link/device_link.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <chrono>
#include <limits>
#include <utility>

#include "host/shown_text.h"
#include "link/instrument_serial.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

constexpr Byte start_byte = 4;
constexpr Byte acknowledge_byte = 6;
constexpr std::uint32_t link_speed_baud = 833000;
/// Pause between a frame and the reading of its acknowledge.
constexpr milliseconds acknowledge_pause{20};

constexpr const char* not_found_text = "Error finding WKTP2B device. Aborting application.";

std::int16_t to_device_count(std::uint32_t count) {
    return static_cast<std::int16_t>(
        std::min<std::uint32_t>(count, std::numeric_limits<std::int16_t>::max()));
}

} // namespace

std::array<Byte, 8> command_frame(std::int16_t command, const CommandArguments& arguments) {
    [[maybe_unused]] const auto in_byte = [](std::int16_t value) {
        return value >= 0 && value <= 255;
    };
    assert(in_byte(command));
    assert(std::all_of(arguments.begin() + 1, arguments.end(), in_byte));
    std::array<Byte, 8> frame = {start_byte, static_cast<Byte>(command)};
    int sum = command;
    for (std::size_t index = 1; index < arguments.size(); ++index) {
        frame[index + 1] = static_cast<Byte>(arguments[index]);
        sum += arguments[index];
    }
    frame[7] = static_cast<Byte>(sum);
    return frame;
}

void DeviceLink::keep(BridgeStatus status) {
    // Held within 16 bits rather than cut, so that a failure never looks like success.
    state_.commstatus = static_cast<std::int16_t>(
        std::clamp<BridgeStatus>(status, std::numeric_limits<std::int16_t>::min(),
                                 std::numeric_limits<std::int16_t>::max()));
}

Bridge& DeviceLink::bridge() const {
    if (announce_) {
        announce_();
    }
    return bridge_;
}

void DeviceLink::show_listing() const {
    if (show_) {
        show_(state_.devices);
    }
}

bool DeviceLink::listdevices() {
    DeviceListing& devices = state_.devices;
    devices.serials.clear();
    devices.selected = -1;
    show_listing();
    const auto [status, count] = bridge().count_devices();
    keep(status);
    state_.numdevices = status == bridge_success ? to_device_count(count) : std::int16_t{0};
    if (status != bridge_success) {
        return false;
    }
    std::vector<std::string> serials;
    looked_at_ = clock_.now();
    for (int index = 0; index < state_.numdevices; ++index) {
        SerialNumber serial = bridge().serial_number(static_cast<std::uint32_t>(index));
        keep(serial.status);
        let_end_now_and_then();
        serials.push_back(std::move(serial.text));
    }
    devices.serials = std::move(serials);
    devices.selected = devices.serials.empty() ? -1 : 0;
    show_listing();
    return true;
}

void DeviceLink::let_end_now_and_then() {
    // Soon enough for whoever waits, and seldom enough to take no time of its own.
    constexpr milliseconds interval{100};
    if (let_end_ && clock_.now() - looked_at_ >= interval) {
        let_end_();
        looked_at_ = clock_.now();
    }
}

void DeviceLink::let_end_of_taking_over() {
    // Each look loses a key that the user presses meanwhile, so what is done sooner gets none.
    constexpr milliseconds first_look{500};
    if (program_.taking_over_since && clock_.now() - *program_.taking_over_since >= first_look) {
        let_end_now_and_then();
    }
}

void DeviceLink::finddevice() {
    if (!listdevices()) {
        end_with("Error finding USB device. Aborting application.", bridge_.trouble());
    }
}

bool DeviceLink::select_and_open() {
    if (state_.numdevices < 1) {
        boxes_.show({.text = "ERROR!!! No attached device is found!!!",
                     .informative = "Connect the instrument to a USB port of this computer.",
                     .details = diagnosis(),
                     .holds_sweep = true});
        return false;
    }
    DeviceListing& devices = state_.devices;
    devices.selectable = true;
    state_.devfound = false;
    for (int index = 0; index < state_.numdevices; ++index) {
        devices.selected = index;
        const std::string serial = devices.serial();
        state_.serialsuffix = serial.size() > 7 ? serial.substr(7, 7) : std::string();
        if (!is_instrument(serial)) {
            continue;
        }
        show_listing();
        opendevice();
        devices.selectable = false;
        show_listing();
        state_.devfound = true;
        return true;
    }
    show_listing();
    end_with(not_found_text, "None of the attached devices has a serial number that begins with " +
                                 std::string(instrument_prefix) + ".");
}

void DeviceLink::opendevice() {
    const BridgeStatus status = bridge().open(static_cast<std::uint32_t>(state_.devices.selected));
    keep(status);
    if (status != bridge_success) {
        end_with("Error opening device: " + shown_line(state_.devices.serial()) +
                     ". Application is aborting. Reset hardware and try again.",
                 bridge_.trouble());
    }
    state_.open = true;
}

void DeviceLink::set_link_speed() {
    keep(bridge().set_speed(link_speed_baud));
    if (state_.commstatus != bridge_success) {
        boxes_.show({.text = "error seting baud rate",
                     .informative = bridge_.trouble(),
                     .holds_sweep = true});
    }
}

bool DeviceLink::checkdevice() {
    constexpr int attempts = 3;
    constexpr std::uint32_t timeout_ms = 1000;
    state_.retrycount = 0;
    if (!state_.open) {
        return false;
    }
    state_.cmdargs = {state_.cmdargs[0], 0, 0, 1, 0, 255};
    keep(bridge().set_time_out(timeout_ms));
    std::array<Byte, 1> reply = {};
    bool timed_out = true;
    while (timed_out && state_.retrycount < attempts) {
        let_end_now_and_then();
        ++state_.retrycount;
        flush();
        sendcommand(command::set_trigger, state_.cmdargs);
        clock_.sleep(acknowledge_pause);
        keep(bridge().read(reply).status);
        timed_out = state_.commstatus == bridge_read_timed_out;
    }
    if (timed_out) {
        close();
        return false;
    }
    if (reply[0] != acknowledge_byte) {
        boxes_.show({.text = "Buffer(0) <> 6", .holds_sweep = true});
        return false;
    }
    power_.note_answer();
    return true;
}

void DeviceLink::close() {
    if (state_.open) {
        state_.open = false;
        keep(bridge().close());
    }
}

void DeviceLink::sendcommand(std::int16_t command, const CommandArguments& arguments) {
    const auto frame = command_frame(command, arguments);
    keep(bridge().write(frame));
    if (state_.commstatus != bridge_success) {
        end_with(not_found_text, "The instrument takes no more data. Check its USB cable and its "
                                 "power, then start the program again.");
    }
    if (command == command::start_sweep || command == command::fetch_sample) {
        power_.note_request();
    }
}

bool DeviceLink::sendcmdack(std::int16_t command, const CommandArguments& arguments,
                            std::int16_t& retries, std::uint32_t timeout_ms,
                            std::string_view label) {
    if (program_.given_up) {
        return false;
    }
    keep(bridge().set_time_out(timeout_ms));
    do {
        let_end_of_taking_over();
        --retries;
        std::array<Byte, 1> reply = {};
        flush();
        sendcommand(command, arguments);
        clock_.sleep(acknowledge_pause);
        keep(bridge().read(reply).status);
        if (state_.commstatus == bridge_success && reply[0] == acknowledge_byte) {
            state_.retrycount = 0;
            power_.note_acknowledge(command == command::set_amplifier_gain);
            return true;
        }
    } while (retries >= 1);
    let_end_of_taking_over();
    acknowledge_missing(label);
    return false;
}

void DeviceLink::acknowledge_missing(std::string_view label) {
    const bool timed_out = state_.commstatus == bridge_read_timed_out;
    power_.note_no_acknowledge();
    boxes_.show({.text = std::string(label) + (timed_out ? "Comm timed out" : "CommError"),
                 .link_failure = true});
    boxes_.show({.text = "Error Sending Data.", .link_failure = true});
}

bool DeviceLink::send_setup(std::int16_t command, std::string_view label) {
    std::int16_t retries = command_attempts;
    return sendcmdack(command, state_.cmdargs, retries, command_timeout_ms, label);
}

void DeviceLink::set_usual_timeouts() {
    keep(bridge().set_time_out(command_timeout_ms));
}

bool DeviceLink::read_flash_word(std::uint16_t address, std::uint16_t& word) {
    flush();
    fill_flash_read(state_.cmdargs, address);
    sendcommand(command::read_flash, state_.cmdargs);
    clock_.sleep(milliseconds(20));
    std::array<Byte, 2> reply = {};
    if (!read(reply)) {
        return false;
    }
    word = static_cast<std::uint16_t>(reply[0] << 8 | reply[1]);
    return true;
}

void DeviceLink::write_flash_word(std::uint16_t address, std::uint16_t word) {
    flush();
    clock_.sleep(milliseconds(20));
    fill_flash_write(state_.cmdargs, address, word);
    sendcommand(command::write_flash, state_.cmdargs);
}

void DeviceLink::waitrxidle() {
    constexpr int polls = 40;
    constexpr milliseconds interval{100};
    std::uint32_t previous = 0;
    for (int poll = 0; poll < polls; ++poll) {
        clock_.sleep(interval);
        let_end_of_taking_over();
        const std::uint32_t count = waiting();
        if (count == previous) {
            return;
        }
        previous = count;
    }
}

void DeviceLink::flush() {
    keep(bridge().flush());
}

std::uint32_t DeviceLink::waiting() {
    const auto [status, count] = bridge().waiting();
    keep(status);
    return status == bridge_success ? count : 0;
}

bool DeviceLink::read(std::span<Byte> bytes) {
    const auto [status, count] = bridge().read(bytes);
    keep(status);
    const bool complete = status == bridge_success && count == bytes.size();
    if (complete) {
        power_.note_answer();
    }
    return complete;
}

void DeviceLink::end_with(const std::string& text, const std::string& advice) {
    if (keep_settings_) {
        keep_settings_();
    }
    boxes_.show({.text = text, .informative = advice, .details = diagnosis(), .holds_sweep = true});
    end_program(program_);
}

} // namespace kv408
