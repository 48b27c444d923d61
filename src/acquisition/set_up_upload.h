#pragma once

#include "host/clock.h"
#include "host/message_boxes.h"
#include "link/device_link.h"
#include "panel/front_panel.h"
#include "panel/trigger.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/time_base_state.h"

namespace kv408 {

/// What a block sweep of `channel` (1 or 2) asks for with the panel as it stands.
[[nodiscard]] SweepRequest sweep_request(const FrontPanel& panel, int channel);

/// Uploads the trigger and the time base and starts the first block sweep.
class SetUpUpload {
public:
    SetUpUpload(FrontPanel& panel, AcquisitionState& acquisition, TimeBaseState& time_base,
                Trigger& trigger, Channels& channels, DeviceLink& link, Clock& clock,
                MessageBoxes& boxes)
        : panel_(panel), acquisition_(acquisition), time_base_(time_base), trigger_(trigger),
          channels_(channels), link_(link), clock_(clock), boxes_(boxes) {}

    /// Uploads the trigger; a failure is told.
    void settriger() { trigger_.settriger(); }

    /// Uploads both channel offsets and the resolution and, unless points are fetched one by one,
    /// starts the first block sweep and sets the state word to its state. A failure is told and
    /// leaves the state word. True when a sweep was started, so that its assembly starts afresh.
    bool setscope8ghz();

private:
    bool send_time_base();
    void note_delays();

    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    TimeBaseState& time_base_;
    Trigger& trigger_;
    Channels& channels_;
    DeviceLink& link_;
    Clock& clock_;
    MessageBoxes& boxes_;
};

} // namespace kv408
