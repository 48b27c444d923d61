#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/clock.h"
#include "host/diagnose.h"
#include "host/message_boxes.h"
#include "link/bridge.h"
#include "link/commands.h"
#include "link/power_watch.h"
#include "state/program_state.h"

namespace kv408 {

/// The attached devices as they were last listed.
struct DeviceListing {
    std::vector<std::string> serials; ///< serial numbers in the bridge's order, empty if unreadable
    int selected = -1;      ///< index of the device that is looked at or open; -1 for none
    bool selectable = true; ///< no instrument has been found among them yet

    /// The serial number of the selected device; empty when none is.
    [[nodiscard]] std::string serial() const {
        return selected < 0 ? std::string() : serials.at(static_cast<std::size_t>(selected));
    }
};

/// The link's state, one for the whole program.
struct LinkState {
    DeviceListing devices;
    std::int16_t commstatus = 0;   ///< status of the last bridge operation
    std::int16_t numdevices = 0;   ///< attached devices at the last listing
    bool devfound = false;         ///< the instrument has been found and opened
    bool open = false;             ///< a device is open
    std::int16_t retrycount = 0;   ///< attempts of the start-up check; 0 after an acknowledge
    CommandArguments cmdargs = {}; ///< argument bytes, kept from one command to the next
    std::string serialsuffix;      ///< characters 8 to 14 of the selected device's serial number
};

/// The link to the instrument: finds and opens it, sends command frames, reads replies. Every
/// call blocks; only one exchange may run at a time. A frame that cannot be written ends the
/// program (ProgramEnded).
class DeviceLink {
public:
    /// Works over `bridge`; `diagnose` gives the details of the messages that the instrument is
    /// not reached.
    DeviceLink(Bridge& bridge, Clock& clock, MessageBoxes& boxes, ProgramState& program,
               Diagnose diagnose = {})
        : bridge_(bridge), clock_(clock), boxes_(boxes), program_(program), power_(clock),
          diagnose_(std::move(diagnose)) {}

    /// The argument bytes of the next command, to be filled; those left alone go out as they are.
    [[nodiscard]] CommandArguments& cmdargs() { return state_.cmdargs; }

    /// The link's state, to look at.
    [[nodiscard]] const LinkState& state() const { return state_; }

    /// Whether the instrument was switched off meanwhile. The link tells it of every request for
    /// samples, every answer and every command that is not acknowledged.
    [[nodiscard]] PowerWatch& power() { return power_; }

    /// Sets what is done before each operation of the bridge: one may never come back.
    void on_operation(std::function<void()> announce) { announce_ = std::move(announce); }

    /// Sets what shows the listing, each time that it or the selection in it has changed.
    void on_listing(std::function<void(const DeviceListing&)> show) { show_ = std::move(show); }

    /// Sets what keeps the user's settings before a message that ends the program is shown, so that
    /// nothing is lost while that waits for its answer.
    void on_ending(std::function<void()> keep) { keep_settings_ = std::move(keep); }

    /// Sets what lets an end that has been asked for come about in the middle of something long,
    /// and unwinds then; without it nothing can be asked for.
    void on_long_work(std::function<void()> let_end) { let_end_ = std::move(let_end); }

    /// Lists the serial numbers of all attached devices and selects the first. False, with no
    /// selection, when the devices cannot be counted. An end that is asked for meanwhile stops it.
    bool listdevices();

    /// Lists the devices; ends the program with a message when that fails.
    void finddevice();

    /// Opens the first listed device whose serial number starts with "lm4rxa". False, with a
    /// message, when no device is attached; ends the program when none matches or opening fails.
    bool select_and_open();

    /// True when the last look found no device at all.
    [[nodiscard]] bool none_attached() const { return state_.numdevices < 1; }

    /// Sets the link speed; a failure is told and ignored.
    void set_link_speed();

    /// True when the opened instrument acknowledges the check frame. After three time-outs the
    /// device is closed; with no device open nothing is sent.
    bool checkdevice();

    /// What stands between the program and its instrument, for the details of a message.
    [[nodiscard]] std::string diagnosis() const { return diagnose_ ? diagnose_() : std::string(); }

    /// Closes the device if one is open.
    void close();

    /// Sends one command frame and reads nothing.
    void sendcommand(std::int16_t command, const CommandArguments& arguments);

    /// Sends a frame and waits for the acknowledge, at most `retries` times (at least once),
    /// `timeout_ms` each; counts `retries` down. False, after two messages of which the first
    /// begins with `label`, when none came; and at once, with nothing sent or told, in an exchange
    /// that the user has given up.
    bool sendcmdack(std::int16_t command, const CommandArguments& arguments, std::int16_t& retries,
                    std::uint32_t timeout_ms, std::string_view label);

    /// Sends a set-up command with the link's own arguments, three attempts of 1000 ms each.
    bool send_setup(std::int16_t command, std::string_view label);

    /// Sets the usual time-outs, of 1000 ms, for all reads and writes from now on.
    void set_usual_timeouts();

    /// Reads the word at `address` of the instrument's flash, high byte first, into `word`; false,
    /// with `word` unchanged, when it does not come within the read time-out.
    bool read_flash_word(std::uint16_t address, std::uint16_t& word);

    /// Writes `word` at `address` of the instrument's flash; nothing is answered.
    void write_flash_word(std::uint16_t address, std::uint16_t word);

    /// Waits until a reply has stopped arriving: polls every 100 ms, at most 40 times.
    void waitrxidle();

    /// Empties both queues.
    void flush();

    /// Number of received bytes that wait; 0 when the bridge cannot tell.
    std::uint32_t waiting();

    /// Reads exactly `bytes.size()` bytes; false when the bridge fails or fewer came in time.
    bool read(std::span<Byte> bytes);

private:
    /// The bridge, for an operation that is announced.
    [[nodiscard]] Bridge& bridge() const;
    void show_listing() const;
    /// Opens the selected device; ends the program with a message when that fails.
    void opendevice();
    /// In something long: lets an end come about when that was last done some time ago.
    void let_end_now_and_then();
    /// The same within an exchange, where settings that take long are being taken over.
    void let_end_of_taking_over();
    void keep(BridgeStatus status);
    [[noreturn]] void end_with(const std::string& text, const std::string& advice);
    void acknowledge_missing(std::string_view label);

    Bridge& bridge_;
    Clock& clock_;
    MessageBoxes& boxes_;
    ProgramState& program_;
    LinkState state_;
    std::function<void()> announce_;
    std::function<void(const DeviceListing&)> show_;
    std::function<void()> keep_settings_;
    std::function<void()> let_end_;
    PowerWatch power_;
    Diagnose diagnose_;
    std::chrono::nanoseconds looked_at_{0}; ///< when an end was last let come about
};

/// The 8-byte frame of a command: 4, the code, five arguments, and the low byte of their sum.
[[nodiscard]] std::array<Byte, 8> command_frame(std::int16_t command,
                                                const CommandArguments& arguments);

} // namespace kv408
