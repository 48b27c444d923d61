#pragma once

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "remote/remote_control.h"
#include "scope/parts.h"
#include "simulator/simulation.h"
#include "support/delayed_bridge.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// The numbers of `list`, which has commas between them.
inline std::vector<double> numbers_in(const std::string& list) {
    std::vector<double> numbers;
    std::istringstream fields(list);
    for (std::string field; std::getline(fields, field, ',');) {
        numbers.push_back(std::strtod(field.c_str(), nullptr));
    }
    return numbers;
}

/// The whole program on the simulated instrument with remote control, all of it on the virtual
/// clock; the network alone is left out.
struct RemoteProgram {
    RemoteProgram() {
        simulation.set_calibrated();
        simulator::silence(simulation.bench());
    }

    /// Start-up, and the two ticks after which the instrument sweeps.
    void start() {
        scope.start();
        control.attach(scope, [this](const std::function<void()>& action) { scope.act(action); });
        control.spare_person();
        ticks(2);
    }

    /// What a person presses.
    void press(const std::function<void()>& action) {
        control.person_pressed();
        scope.act(action);
    }

    /// Lets the timer tick `count` times, at whole multiples of 100 ms.
    void ticks(int count) {
        for (int tick = 0; tick < count; ++tick) {
            constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
            clock.advance(interval - clock.now() % interval);
            scope.tick();
            control.tick_over();
        }
    }

    /// Lets `who` send `line` and run it as far as that goes; the answer without its end, and
    /// "(held)" where it is held back.
    std::string ask(Client& who, const std::string& line) {
        who.take(line + "\n");
        return go_on(who);
    }
    std::string ask(const std::string& line) { return ask(client, line); }

    /// The same for what has been held back.
    std::string go_on(Client& who) {
        std::string reply;
        while (who.awaits_answer() || who.can_run(control.moment(who))) {
            reply += who.run(control.moment(who));
        }
        if (who.busy()) {
            return "(held)";
        }
        if (!reply.empty()) {
            reply.pop_back();
        }
        return reply;
    }

    /// Asks, with ticks as long as it is held back.
    std::string ask_and_wait(const std::string& line, int most = 200) {
        std::string answer = ask(line);
        for (; answer == "(held)" && most > 0; --most) {
            ticks(1);
            answer = go_on(client);
        }
        return answer;
    }

    /// The oldest error.
    std::string error(Client& who) { return ask(who, "SYST:ERR?"); }
    std::string error() { return error(client); }

    [[nodiscard]] const Parts& parts() const { return scope.parts(); }

    VirtualClock clock;
    simulator::WireLog log;
    simulator::Simulation simulation{clock, {}, 1, &log};
    DelayedBridge bridge{simulation.bridge()};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Gate gate;
    GatedMessageBoxes gated_boxes{boxes, gate};
    GatedWindowMessages gated_messages{messages, gate};
    Scope scope{
        Machine{clock, gated_boxes, gated_messages, bridge, files, choosers, fake_places(), coder}};
    RemoteControl control{{clock, gate, [] {}}};
    Client client{control.table()};
};

} // namespace kv408
