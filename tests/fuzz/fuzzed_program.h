#pragma once

#include <array>
#include <chrono>
#include <cmath>
#include <string>

#include "fuzz/promise.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// The whole program on a bridge that is handed in, all of it on the virtual clock.
struct FuzzedProgram {
    /// `settings_file` is what the settings file holds; empty: there is none.
    FuzzedProgram(VirtualClock& used_clock, Bridge& bridge, const std::string& settings_file = {})
        : clock(used_clock), scope(Machine{used_clock, boxes, messages, bridge, files, choosers,
                                           fake_places(), coder}) {
        if (!settings_file.empty()) {
            files.files[settings_path] = settings_file;
        }
    }

    /// One tick at the next whole multiple of 100 ms.
    void tick() {
        constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
        clock.advance(interval - clock.now() % interval);
        scope.tick();
    }

    [[nodiscard]] const std::string& state() const { return scope.parts().acquisition.scopestate; }

    static constexpr const char* settings_path = "/settings/kv408/ConfigsLM4RX.TXT";

    VirtualClock& clock;
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope;
};

/// Demands that the state word is one of the machine's and that every sample lies where the
/// limits of the receiver leave it.
inline void demand_sane_acquisition(const FuzzedProgram& program) {
    constexpr std::array states = {"",        "Idle",           "idle",    "startscope",
                                   "scope",   "scopech1f",      "stoped",  "scopech2f",
                                   "changes", "calibrationint", "changes1"};
    bool known = false;
    for (const char* const state : states) {
        known = known || program.state() == state;
    }
    demand(known, "the state word is one of the machine's");
    // The high byte is held to 32 and a code correction to 299.
    constexpr int highest_code = 32 * 256 + 255 + 299;
    constexpr int zero_code = 2048;
    for (const SampleBuffer& samples : program.scope.parts().samples) {
        for (const std::uint16_t code : samples.raw) {
            demand(code <= highest_code, "no code is above the limit of its high byte");
        }
        for (const double mv : samples.mv) {
            // The coarsest range is half a millivolt per code, "Input Via Trigger" doubles it.
            demand(std::abs(mv) <= highest_code - zero_code, "no sample is beyond its code");
        }
    }
}

} // namespace kv408
