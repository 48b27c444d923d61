#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "state/channel.h"
#include "state/colour.h"

namespace kv408 {

/// The scale of a curve: its own, or where there is none that of the channel that it follows.
struct CurveScale {
    std::optional<double> per_division; ///< in the unit of the curve's points, above 0
    std::optional<double> position; ///< of the zero line, divisions above the centre of the screen

    friend bool operator==(const CurveScale&, const CurveScale&) = default;
};

/// A curve that was kept or computed, in its own units. It never changes.
struct ReferenceCurve {
    Channel channel = ch1;   ///< that it follows
    double first_time = 0.0; ///< of the first point, after the trigger, picoseconds
    double interval = 0.0;   ///< from point to point, picoseconds
    /// Point by point, millivolts at the input; of what is no voltage thousandths of its unit.
    std::vector<double> mv;
    std::vector<double> lower = {}; ///< of an envelope the lower line, as many; else none
    CurveScale scale = {};
};

/// A curve that is shown beside the traces.
struct ShownReference {
    std::shared_ptr<const ReferenceCurve> curve; ///< never null
    Colour colour;
    std::string caption; ///< "R1 CH1 sweep 7   50mV/div   20ns/div"
};

} // namespace kv408
