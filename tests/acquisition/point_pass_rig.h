#pragma once

#include <functional>
#include <vector>

#include "acquisition/acquisition_rig.h"

namespace kv408 {

/// A started program in point mode at 12 ps per point, just before a pass over the given channels.
/// The n-th point fetched (from 0) answers with the code 1000 + n unless `answer` says otherwise.
struct PassRig : AcquisitionRig {
    PassRig(bool first, bool second) {
        start();
        enable(first, second);
        acquisition.pointmode = true;
        acquisition.scopestate = "scope";
        time_base_state.tbresolution = 12.0;
        clock.sleep(std::chrono::seconds(1) - clock.now());
        panel.textstatus.set_text("before");
        bridge.on_frame = [this](const FakeBridge::Frame&) {
            const int code = 1000 + fetched;
            ++fetched;
            bridge.receive(answer ? answer(fetched) : std::vector{code / 256, code % 256});
        };
    }

    int fetched = 0;                             ///< points fetched so far
    std::function<std::vector<int>(int)> answer; ///< reply to the n-th point fetched, from 1
};

} // namespace kv408
