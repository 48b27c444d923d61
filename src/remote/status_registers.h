#pragma once

#include <cstdint>

namespace kv408 {

/// A condition register with the events that it has seen and what of them is reported, by SCPI-99,
/// volume 1, chapter 20: a bit of the condition that becomes 1 is an event.
class EventRegister {
public:
    /// The condition as it is now; bit 15 is never used.
    void set_condition(std::uint16_t condition) {
        event_ |= static_cast<std::uint16_t>(condition & ~condition_);
        condition_ = condition;
    }
    [[nodiscard]] std::uint16_t condition() const { return condition_; }

    /// The events since the last time, which are forgotten by it.
    std::uint16_t take_event() {
        const std::uint16_t event = event_;
        event_ = 0;
        return event;
    }
    void clear_event() { event_ = 0; }

    /// Which events the status byte sums up, 0 at first.
    void set_enable(std::uint16_t enable) { enable_ = enable; }
    [[nodiscard]] std::uint16_t enable() const { return enable_; }

    /// True when an enabled event has been seen.
    [[nodiscard]] bool summary() const { return (event_ & enable_) != 0; }

private:
    std::uint16_t condition_ = 0;
    std::uint16_t event_ = 0;
    std::uint16_t enable_ = 0;
};

/// The registers of IEEE 488.2, chapter 11, that one client has.
struct StatusRegisters {
    // Bits of the standard event status.
    static constexpr std::uint8_t operation_complete = 1 << 0;
    static constexpr std::uint8_t query_error = 1 << 2;
    static constexpr std::uint8_t device_error = 1 << 3;
    static constexpr std::uint8_t execution_error = 1 << 4;
    static constexpr std::uint8_t command_error = 1 << 5;
    static constexpr std::uint8_t power_on = 1 << 7;

    /// Standard event status (`*ESR?`). For a client the instrument is switched on as it connects.
    std::uint8_t event = power_on;
    std::uint8_t event_enable = 0;   ///< `*ESE`
    std::uint8_t service_enable = 0; ///< `*SRE`; bit 6 stays 0
    EventRegister operation;         ///< `STATus:OPERation`
    EventRegister questionable;      ///< `STATus:QUEStionable`

    /// The status byte: bit 2 errors wait, 3 questionable, 4 a reply waits, 5 a standard event,
    /// 7 operation, 6 one of these that is enabled.
    [[nodiscard]] std::uint8_t status_byte(bool errors_wait, bool reply_waits) const {
        unsigned byte = (errors_wait ? 1U << 2 : 0U) | (questionable.summary() ? 1U << 3 : 0U) |
                        (reply_waits ? 1U << 4 : 0U) |
                        ((event & event_enable) != 0 ? 1U << 5 : 0U) |
                        (operation.summary() ? 1U << 7 : 0U);
        byte |= (byte & service_enable) != 0 ? 1U << 6 : 0U;
        return static_cast<std::uint8_t>(byte);
    }
};

} // namespace kv408
