#pragma once

#include <chrono>
#include <cstdint>

#include "host/clock.h"
#include "host/window_messages.h"
#include "link/device_link.h"
#include "panel/front_panel.h"
#include "panel/measuring.h"
#include "panel/screen.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/samples.h"
#include "state/time_base_state.h"

namespace kv408 {

/// Acquires point by point: one exchange an enabled channel and screen column.
class PointPass {
public:
    PointPass(FrontPanel& panel, AcquisitionState& acquisition, const TimeBaseState& time_base,
              const Channels& channels, Samples& samples, DeviceLink& link, Clock& clock,
              WindowMessages& messages, Screen& screen, Measuring& measuring)
        : panel_(panel), acquisition_(acquisition), time_base_(time_base), channels_(channels),
          samples_(samples), link_(link), clock_(clock), messages_(messages), screen_(screen),
          measuring_(measuring) {}

    /// One pass of up to 640 points over the channels enabled at its start. Lets window messages
    /// run before each point and ends as soon as the state word is no longer "scope". What there
    /// is then is measured, unless the instrument waits for a trigger or did not answer, or ticks
    /// that fell into those messages have swept on.
    void sdisplay1ghzt();

private:
    /// What came of one point, or of one channel's exchange.
    enum class Outcome { taken, waiting, failed };

    /// What there is to do where a point did not come: the sweep in hand is no whole one.
    void end_without_point(Outcome outcome);
    Outcome take_point(int index, const std::array<bool, 2>& enabled);
    Outcome fetch(int channel, int index, const PointDelay& delay);
    void show_progress(int index, std::chrono::nanoseconds start);

    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    const TimeBaseState& time_base_;
    const Channels& channels_;
    Samples& samples_;
    DeviceLink& link_;
    Clock& clock_;
    WindowMessages& messages_;
    Screen& screen_;
    Measuring& measuring_;
};

} // namespace kv408
