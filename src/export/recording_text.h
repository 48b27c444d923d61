#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "export/exported_sweep.h"

namespace kv408 {

/// The headings of a recording in one file, a line. Each channel has times of
/// its own and its place whether it is on or off, so that the columns stay the
/// same whatever is set meanwhile.
[[nodiscard]] std::string recording_headings();

/// `lines`, whole lines that go into a file from place `at` on, with comments
/// between them so that none crosses a multiple of 4096 bytes. The system
/// writes such a page at once or not at all when the program is killed, so that
/// what is in the file always ends with a whole line.
[[nodiscard]] std::string fill_pages(std::string_view lines, std::uintmax_t at);

/// Numbers as `number_text` writes them. It keeps those that came lately:
/// sweeps repeat a few thousand voltages, and writing a number anew takes ten
/// times as long.
class NumberTexts {
public:
    NumberTexts() : kept_(std::size_t{1} << index_bits) {}

    /// `value` as text, until the next call.
    [[nodiscard]] std::string_view of(double value);

private:
    static constexpr unsigned index_bits = 13;

    struct Kept {
        std::uint64_t value = 0; ///< its bits
        std::string text;        ///< empty: none is kept here
    };

    std::vector<Kept> kept_;
};

/// The sweeps of a recording as text, one after the other.
class RecordingText {
public:
    /// The lines of `sweep`, each with its number and date in front. Before them
    /// stand the comments that say what it was taken with, where these differ
    /// from those of the sweep before.
    [[nodiscard]] std::string lines(const ExportedSweep& sweep);

private:
    /// The times of a channel's points as text.
    struct Times {
        double first_time = 0.0; ///< of the channel that they are of
        double interval = 0.0;
        std::vector<std::string> texts; ///< with a comma in front
    };

    /// Brings `times` up to those of `channel`; mostly they are its already.
    static void follow(const ExportedChannel& channel, Times& times);

    std::string comments_;
    std::array<Times, 2> times_;
    NumberTexts voltages_;
};

} // namespace kv408
