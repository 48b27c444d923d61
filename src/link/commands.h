#pragma once

// The instrument's command set: the codes, and one function per command that fills its arguments.
// Arguments that a command does not fill keep what the command before left in them; the
// instrument sees them.
//
// How to add a command: 1. give it a code here; 2. write the function that fills its arguments;
// 3. send it with DeviceLink::sendcmdack (acknowledged, with its label) or DeviceLink::sendcommand;
// 4. teach it to the simulated instrument (src/simulator).

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "state/channel.h"

namespace kv408 {

/// The argument bytes of a command in elements 1 to 5, each 0..255; element 0 carries nothing.
using CommandArguments = std::array<std::int16_t, 6>;

/// Command codes of the wire protocol.
namespace command {
inline constexpr std::int16_t set_trigger = 8;
inline constexpr std::int16_t set_amplifier_gain = 9;
inline constexpr std::int16_t fetch_sample = 26;
inline constexpr std::int16_t set_trigger_timeout = 27;
inline constexpr std::int16_t start_linearity = 29;
inline constexpr std::int16_t set_offset_ch1 = 30;
inline constexpr std::int16_t set_resolution = 31;
inline constexpr std::int16_t start_sweep = 32;
inline constexpr std::int16_t read_flash = 33;
inline constexpr std::int16_t write_flash = 34;
inline constexpr std::int16_t set_offset_ch2 = 35;
} // namespace command

/// Attempts and time-out of every acknowledged set-up command.
inline constexpr std::int16_t command_attempts = 3;
inline constexpr std::uint32_t command_timeout_ms = 1000;

/// Limits of the trigger time-out that the instrument takes.
inline constexpr std::int32_t least_trigger_timeout = 10;
inline constexpr std::int32_t greatest_trigger_timeout = 65535;

/// `splitlong`: the four bytes of `value` as they stand in memory, `b0` the lowest.
void splitlong(std::int32_t value, std::uint8_t& b3, std::uint8_t& b2, std::uint8_t& b1,
               std::uint8_t& b0);

/// Puts all 32 bits of `value` into arguments 1 to 4, most significant byte first.
void put_32_bits(CommandArguments& arguments, std::int32_t value);

/// Puts the low 16 bits of `value` into arguments `first` and `first` + 1, high byte first.
void put_16_bits(CommandArguments& arguments, std::size_t first, std::int32_t value);

/// The trigger as the instrument is told it.
struct TriggerSetup {
    std::int32_t level = 0;      ///< level code, its low 16 bits are sent
    bool trig1 = true;           ///< source "TRIG1", else the second input
    bool positive = true;        ///< edge "Positive"
    std::int16_t hysteresis = 0; ///< 0..255
};

/// Fills all five arguments of the set-trigger command. Source and edge share one code (1, 2 for
/// TRIG1, 21, 22 for the other); the hysteresis stands in argument 4 for TRIG1 and in argument 5
/// for the other source, 255 in the other one.
void fill_trigger(CommandArguments& arguments, const TriggerSetup& trigger);

/// The trigger time-out that the text `trtout` says, in microseconds or with the unit us or ms;
/// rounded halves to even and held within 10..65535. Nothing where it says none.
[[nodiscard]] std::optional<std::int32_t> typed_trigger_timeout(std::string_view text);

/// The same; where the text says none, its leading number counts.
[[nodiscard]] std::int32_t trigger_timeout(std::string_view text);

/// Fills arguments 1 and 2 with the trigger time-out; 3 to 5 stay those of the set-trigger command.
void fill_trigger_timeout(CommandArguments& arguments, std::int32_t timeout);

/// Fills all five arguments of the amplifier-gain command with both channels' ranges, 1 or 2.
void fill_gain(CommandArguments& arguments, const std::array<std::int16_t, 2>& gain);

/// Fills arguments 1 to 4 of the resolution command; a resolution of 0 ps is sent as 1.
void fill_resolution(CommandArguments& arguments, std::int32_t picoseconds);

/// What a block sweep asks for.
struct SweepRequest {
    bool average = false;  ///< "Filter Avg." checked: the instrument averages
    bool speed = false;    ///< "Speed opt." checked
    Channel channel = ch1; ///< channel to fetch
};

/// Fills all five arguments of the full-sweep command for `npoints` points.
void fill_sweep(CommandArguments& arguments, const SweepRequest& request);

/// Where one single point lies, as the instrument is told it.
struct PointDelay {
    std::int32_t coarse = 0; ///< first position value, 0..32767
    std::int32_t second = 1; ///< second position value, 16 bits
    std::uint8_t fine = 240; ///< fine-delay byte
};

/// Fills all five arguments of the read-flash command for the word at `address`.
void fill_flash_read(CommandArguments& arguments, std::uint16_t address);

/// Fills all five arguments of the write-flash command for `word` at `address`.
void fill_flash_write(CommandArguments& arguments, std::uint16_t address, std::uint16_t word);

/// Fills all five arguments of the single-point command; CH2 sets bit 15 of the first value.
void fill_sample(CommandArguments& arguments, const PointDelay& delay, Channel channel);

} // namespace kv408
