#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/exported_sweep.h"

namespace kv408 {

/// A curve that was kept to compare the live traces with, in its own units.
struct Reference {
    std::string name;          ///< "R1 CH2 sweep 7" or that of the file
    ExportedChannel curve;     ///< its points; `curve.name` is the channel that it follows
    double time_per_div = 0.0; ///< picoseconds per division that were selected
    bool shown = true;
};

/// The screen of the channel that a reference follows.
struct ReferenceScreen {
    double mv_per_division = 0.0;    ///< selected now
    double zero_row = 0.0;           ///< the channel's zero line, 0 the top
    double columns_per_second = 0.0; ///< of the time base that is selected now
    double first_time = 0.0;         ///< time of column 1 after the trigger, picoseconds
};

/// A point of a reference on the plot, in its units; it may lie outside.
struct ReferencePoint {
    double column;
    double row;
};

/// `curve` as it lies on `screen`: where a live trace of the same signal would lie.
[[nodiscard]] std::vector<ReferencePoint> on_screen(const ExportedChannel& curve,
                                                    const ReferenceScreen& screen);

/// The four references of a session.
class References {
public:
    static constexpr std::size_t count = 4;

    /// The reference in `place`, 0..3; nothing where none is kept.
    [[nodiscard]] const std::optional<Reference>& at(std::size_t place) const {
        return places_.at(place);
    }

    /// Keeps channel `name` of `sweep` in `place` and shows it. False where the sweep has no such
    /// channel, and nothing changes then.
    bool keep(std::size_t place, const ExportedSweep& sweep, std::string_view name);

    /// Keeps the first channel of the file called `name` with the content `csv`, one of our own, in
    /// `place`, and shows it. What is wrong with the file, in words, where it cannot be taken;
    /// nothing changes then.
    [[nodiscard]] std::string load(std::size_t place, const std::string& name,
                                   std::string_view csv);

    /// Shows the reference in `place` if it is hidden, or hides it.
    void toggle(std::size_t place);

    /// Empties `place`.
    void clear(std::size_t place) { places_.at(place).reset(); }

private:
    std::array<std::optional<Reference>, count> places_;
};

} // namespace kv408
