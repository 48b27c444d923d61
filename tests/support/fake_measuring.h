#pragma once

#include <functional>

#include "panel/measuring.h"

namespace kv408 {

/// Measurements that measure and show nothing and count how often they were asked to.
class FakeMeasuring : public Measuring {
public:
    void makemeasurement() override {
        ++measured;
        if (on_measure) {
            on_measure();
        }
    }

    void showmeasurements() override {
        ++shown;
        if (on_show) {
            on_show();
        }
    }

    int measured = 0;                 ///< how often the sweeps were to be measured
    int shown = 0;                    ///< how often the results were to be shown
    std::function<void()> on_measure; ///< runs at each measuring
    std::function<void()> on_show;    ///< runs at each showing
};

} // namespace kv408
