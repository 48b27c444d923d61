#pragma once

namespace kv408 {

/// What acquisition and panel ask of the automatic measurements.
class Measuring {
public:
    virtual ~Measuring() = default;

    /// Measures the last finished sweep, both channels at once, while the measurements are on.
    virtual void makemeasurement() = 0;

    /// Shows the latest results in the panel under the plot.
    virtual void showmeasurements() = 0;
};

} // namespace kv408
