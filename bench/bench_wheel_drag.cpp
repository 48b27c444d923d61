// What dragging the adjust wheel takes: the whole program without its window on the simulated
// instrument, both channels sweeping in lines with full persistence, and every move drawn.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

#include "display/picture.h"
#include "display/settings_dialog.h"
#include "panel/front_panel.h"
#include "scope/scope.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace {

using namespace kv408;
using Seconds = std::chrono::duration<double>;

constexpr int moves_per_second = 60;
constexpr int ticks_per_second = 10;
constexpr int measured_seconds = 20;

/// The time that `work` takes on this machine.
template <typename Work>
double seconds_of(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return Seconds(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The program, sweeping, with a full history.
struct Sweeping {
    Sweeping() {
        scope.start();
        scope.act([this] {
            scope.panel().mnusettings.click();
            scope.settings_dialog().controls().persist.set_value(9);
            scope.settings_dialog().controls().cmdok.click();
            scope.panel().persist.set_checked(true);
            scope.panel().channel[0].slenps.set_checked(true);
            scope.panel().channel[1].slenps.set_checked(true);
            scope.picture().on_drawn([this](Columns) { ++drawn; });
        });
        for (int count = 0; count < 40; ++count) {
            tick();
        }
    }

    void tick() {
        clock.advance(std::chrono::milliseconds(100));
        scope.tick();
    }

    VirtualClock clock;
    simulator::Simulation simulation{clock};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope{Machine{clock, boxes, messages, simulation.bridge(), files, choosers, fake_places(),
                        coder}};
    int drawn = 0;
};

/// Drags the wheel to and fro on the tab with `key` and prints what it took.
void measure(std::string_view key) {
    Sweeping program;
    FrontPanel& panel = program.scope.panel();
    int tab = 0;
    if (hasnotab(panel.tabstrip2, key, tab)) {
        return;
    }
    program.scope.act([&] {
        panel.tabstrip2.select(tab);
        panel.slider1.turn_to((panel.slider1.Min() + panel.slider1.Max()) / 2);
        panel.slider1.mouse_down(0, 0);
    });
    program.drawn = 0;
    std::vector<double> moves;
    double all = 0.0;
    for (int move = 0; move < moves_per_second * measured_seconds; ++move) {
        const int x = move / 30 % 2 == 0 ? move % 30 : 30 - move % 30;
        moves.push_back(seconds_of([&] {
            program.scope.act([&] { panel.slider1.mouse_move(left_mouse_button, x, 0); });
        }));
        all += moves.back();
        if (move % (moves_per_second / ticks_per_second) == 0) {
            all += seconds_of([&] { program.tick(); });
        }
    }
    std::printf(
        "%-5s %7.0f us a move (median), %5.2f pictures a move, %5.1f %% of a core at %d moves a "
        "second with the sweeps\n",
        key.data(), median(moves) * 1e6,
        static_cast<double>(program.drawn) / (moves_per_second * measured_seconds),
        100.0 * all / measured_seconds, moves_per_second);
}

} // namespace

int main() {
    for (const std::string_view key : {"CH1", "TRIG", "HPOS"}) {
        measure(key);
    }
    return 0;
}
