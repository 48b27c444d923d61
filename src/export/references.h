#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "export/exported_sweep.h"
#include "state/reference_curve.h"

namespace kv408 {

/// A curve that was kept to compare the live traces with, in its own units.
struct Reference {
    std::string name; ///< "R1 CH2 sweep 7" or that of the file
    /// With the one channel that was kept, or the two lines of an envelope.
    ExportedSweep sweep;
    std::shared_ptr<const ReferenceCurve> curve; ///< its points, for the picture
    bool shown = true;

    /// What was kept of it; `name` is the channel that it follows.
    [[nodiscard]] const ExportedChannel& channel() const { return sweep.channels.front(); }

    /// What people read beside the plot: its name, volts and time per division where it knows them.
    [[nodiscard]] std::string caption() const;
};

/// What the reference in `place`, 0..3, is called: "R1" and so on.
[[nodiscard]] std::string reference_name(std::size_t place);

/// The four references of a session.
class References {
public:
    static constexpr std::size_t count = 4;

    /// The reference in `place`, 0..3; nothing where none is kept.
    [[nodiscard]] const std::optional<Reference>& at(std::size_t place) const {
        return places_.at(place);
    }

    /// Keeps channel `name` of `sweep` in `place` and shows it; "MATH1" is a computed trace, both
    /// of its lines where it is an envelope. False where the sweep has no such channel, and nothing
    /// changes then.
    bool keep(std::size_t place, const ExportedSweep& sweep, std::string_view name);

    /// Keeps channel `channel` of `sweep`, which the file called `name` holds, in `place` and shows
    /// it; `channel` counts from 0.
    void keep_loaded(std::size_t place, const std::string& name, ExportedSweep sweep,
                     std::size_t channel);

    /// Shows the reference in `place` if it is hidden, or hides it.
    void toggle(std::size_t place);

    /// Empties `place`.
    void clear(std::size_t place) { places_.at(place).reset(); }

private:
    std::array<std::optional<Reference>, count> places_;
};

} // namespace kv408
