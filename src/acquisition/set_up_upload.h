#pragma once

#include "panel/surroundings.h"
#include "panel/trigger.h"

namespace kv408 {

/// What a block sweep of `channel` asks for with the panel as it stands.
[[nodiscard]] SweepRequest sweep_request(const FrontPanel& panel, Channel channel);

/// Uploads the trigger and the time base and starts the first block sweep.
class SetUpUpload {
public:
    SetUpUpload(const Surroundings& around, Trigger& trigger)
        : around_(around), trigger_(trigger) {}

    /// Uploads the trigger; a failure is shown in a message.
    void settriger() { trigger_.settriger(); }

    /// Uploads both channel offsets and the resolution and, unless points are fetched one by one,
    /// starts the first block sweep and sets the state word to its state. A failure is shown in a
    /// message and leaves the state word unchanged. True when a sweep was started, so that its
    /// assembly starts afresh.
    bool setscope8ghz();

private:
    bool send_time_base();
    void note_delays();

    Surroundings around_;
    Trigger& trigger_;
};

} // namespace kv408
