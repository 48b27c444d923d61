#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "state/calibration_record.h"

namespace kv408 {

/// Word addresses of the instrument's flash.
namespace flash_address {
inline constexpr std::uint16_t record = 0xA400;      ///< value 0 of the record; 11 values
inline constexpr std::uint16_t hardware_id = 0xA43D; ///< identification, "Hardware ID"
inline constexpr std::uint16_t firmware_id = 0xA43E; ///< identification, "Firmware ID"
inline constexpr std::uint16_t marker = 0xA43F;      ///< 55 after a complete write
} // namespace flash_address

/// Stands at the marker's address after a complete write of the record.
inline constexpr std::uint16_t written_marker = 55;

/// Address of value `index`, 0..10.
[[nodiscard]] std::uint16_t record_address(std::size_t index);

/// What value `index`, 0..10, is, in words: "CH1 offset, low gain".
[[nodiscard]] std::string_view record_value_name(std::size_t index);

/// The number that a flash word stands for: 16 bits with sign.
[[nodiscard]] std::int32_t value_of_word(std::uint16_t word);

/// The flash word that `value` is stored as: its low 16 bits.
[[nodiscard]] std::uint16_t word_of_value(std::int32_t value);

/// The first of `items`, parted by semicolons, and how many more there are: "a; b and 9 more".
[[nodiscard]] std::string first_few(std::span<const std::string> items);

/// What differs between the record that was written and the one that the instrument holds, as
/// "CH1 gain, low gain is 9999 and not 10000", the first few; empty when nothing does.
[[nodiscard]] std::string differences(const CalibrationRecord& written,
                                      const CalibrationRecord& held);

/// What an instrument is told from others by; what is not known is empty.
struct InstrumentIdentity {
    std::string serial;   ///< its serial number
    std::string hardware; ///< the word "Hardware ID", decimal
    std::string firmware; ///< the word "Firmware ID", decimal
};

/// False when serial number or hardware of two instruments are known and differ. The firmware may
/// have been renewed.
[[nodiscard]] bool may_be_the_same(const InstrumentIdentity& one, const InstrumentIdentity& other);

/// A record that is kept in a file, and of which instrument it is.
struct KeptRecord {
    CalibrationRecord values = {};
    InstrumentIdentity instrument = {};
};

/// `kept` as a text file: a heading, what it is of, a line with number, value and name for every
/// value, and an end mark.
[[nodiscard]] std::string record_file(const KeptRecord& kept);

/// The record in a text file that `record_file` has made; nothing when the file is another one, was
/// cut off, or lacks or repeats a value.
[[nodiscard]] std::optional<KeptRecord> record_of_file(std::string_view bytes);

} // namespace kv408
