#pragma once

#include <memory>
#include <string>
#include <vector>

#include "state/channel.h"
#include "state/colour.h"

namespace kv408 {

/// A curve that was kept, in its own units. It never changes.
struct ReferenceCurve {
    Channel channel = ch1;   ///< that it follows
    double first_time = 0.0; ///< of the first point, after the trigger, picoseconds
    double interval = 0.0;   ///< from point to point, picoseconds
    std::vector<double> mv;  ///< point by point, millivolts at the input
};

/// A curve that is shown under the traces.
struct ShownReference {
    std::shared_ptr<const ReferenceCurve> curve; ///< never null
    Colour colour;
    std::string caption; ///< "R1 CH1 sweep 7   50mV/div   20ns/div"
};

} // namespace kv408
