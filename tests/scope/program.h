#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "display/picture.h"
#include "panel/front_panel.h"
#include "scope/parts.h"
#include "scope/scope.h"
#include "simulator/simulation.h"
#include "support/choose_entry.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// The whole program on the simulated instrument, all of it on the virtual clock.
struct Program {
    /// `noise_free` takes every noise and error out of signals and sampler.
    explicit Program(bool noise_free = true) {
        simulation.set_calibrated();
        if (noise_free) {
            simulator::silence(simulation.bench());
        }
    }

    /// Lets the timer tick `count` times, at whole multiples of 100 ms; those that pass during a
    /// tick are lost, as the window's timer loses them.
    void ticks(int count) {
        for (int tick = 0; tick < count; ++tick) {
            constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
            clock.advance(interval - clock.now() % interval);
            scope.tick();
        }
    }

    /// The controls of channel index `channel`.
    ChannelControls& channel(std::size_t channel) { return scope.panel().channel[channel]; }

    /// Does what a click does that sets list `list` to the entry `text`.
    void choose(ListBox& list, const std::string& text) { choose_entry(scope, list, text); }

    [[nodiscard]] const std::string& status() { return scope.panel().textstatus.text(); }
    [[nodiscard]] const std::string& state() const { return scope.parts().acquisition.scopestate; }

    VirtualClock clock;
    simulator::WireLog log;
    simulator::Simulation simulation{clock, {}, 1, &log};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope{Machine{clock, boxes, messages, simulation.bridge(), files, choosers, fake_places(),
                        coder}};
};

/// The frames of `program` from the `first` on, as code and five arguments.
inline std::vector<std::vector<int>> frames_of(const Program& program, std::size_t first = 0) {
    std::vector<std::vector<int>> result;
    for (std::size_t index = first; index < program.log.frames.size(); ++index) {
        const auto& command = program.log.frames[index].command;
        std::vector<int> frame = {command.code};
        frame.insert(frame.end(), command.arguments.begin(), command.arguments.end());
        result.push_back(frame);
    }
    return result;
}

} // namespace kv408
