#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

#include "host/files.h"

namespace kv408::simulator {

/// Word addresses of the calibration memory.
inline constexpr std::uint16_t record_address = 0xA400;      ///< calibration value 0; 11 values
inline constexpr std::uint16_t hardware_id_address = 0xA43D; ///< identification, "Hardware ID"
inline constexpr std::uint16_t firmware_id_address = 0xA43E; ///< identification, "Firmware ID"
inline constexpr std::uint16_t marker_address = 0xA43F;      ///< 55 after a complete write
inline constexpr std::uint16_t written_marker = 55;

/// Places of the values in the calibration record. The four offsets and the four gains are in the
/// order CH1 low, CH1 high, CH2 low, CH2 high gain.
inline constexpr std::uint16_t record_size = 11;
inline constexpr std::uint16_t record_offsets = 0;       ///< codes, 2048 changes nothing
inline constexpr std::uint16_t record_gains = 4;         ///< 10000 changes nothing
inline constexpr std::uint16_t record_time_scale = 8;    ///< 10000 changes nothing
inline constexpr std::uint16_t record_bridge_offset = 9; ///< 100 unless calibrated
inline constexpr std::uint16_t record_adc_delay = 10;    ///< 70 unless calibrated

/// The value of a word that was never written.
inline constexpr std::uint16_t erased_word = 0xFFFF;

/// Where the flash memory outlives the program: the file at `path`, one of `files`, which outlive
/// the memory. No files: nowhere.
struct FlashPlace {
    Files* files = nullptr;
    std::filesystem::path path = {};
};

/// The place in the folder `settings` of `files`, where the programs keep the simulated memory;
/// nowhere where the folder cannot be made.
[[nodiscard]] FlashPlace kept_flash(Files& files, const std::filesystem::path& settings);

/// The instrument's flash memory: 16-bit words that outlive the program in a small text file, a
/// line with address and word, both hexadecimal, for every word written.
class Flash {
public:
    /// Loads the words from the file at `place` if it can be read; lines that are no address and
    /// word are skipped. Without a place the words are in memory only.
    explicit Flash(FlashPlace place = {});

    /// The word at `address`, `erased_word` when it was never written.
    [[nodiscard]] std::uint16_t read(std::uint16_t address) const;

    /// Sets the word at `address` and saves the file.
    void write(std::uint16_t address, std::uint16_t word);

    /// No word was ever written.
    [[nodiscard]] bool empty() const { return words_.empty(); }

    /// The last write reached the file; true as well when there is no file.
    [[nodiscard]] bool saved() const { return saved_; }

    /// Calibration value `index`, 0..10, as the signed number that its word stands for.
    [[nodiscard]] std::int16_t record(std::uint16_t index) const;

    /// Writes the record that corrects nothing, the marker and the identification words.
    void write_neutral_record();

private:
    void load();
    void save();

    FlashPlace place_;
    std::map<std::uint16_t, std::uint16_t> words_;
    bool saved_ = true;
};

} // namespace kv408::simulator
