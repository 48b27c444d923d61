// What a recording costs a sweep, and that its memory stays flat for an hour.
//
//     build/release/bench/bench_recording [<virtual minutes>]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>

#include "export/record_dialog.h"
#include "host/path_text.h"
#include "host/system_files.h"
#include "scope/parts.h"
#include "scope/tools.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/temporary_folder.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Processor time of the thread that ticks, or of all.
double used_ms(clockid_t whose) {
    timespec time = {};
    clock_gettime(whose, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

/// Memory of this process, KiB.
long resident() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::atol(line.c_str() + 6);
        }
    }
    return 0;
}

/// The program on the machine's files, ticking as fast as it can.
struct Recorded {
    void tick_until(std::uint64_t sweep) {
        while (scope.parts().sweeps.last()->number < sweep) {
            constexpr nanoseconds interval = milliseconds(100);
            clock.advance(interval - clock.now() % interval);
            scope.tick();
            // Virtual time runs ahead of the disk.
            while (controls.cmdRecordStop.enabled() && behind() > Recorder::most_waiting / 2) {
                std::this_thread::sleep_for(milliseconds(1));
                dialog.tick();
            }
        }
    }

    /// Sweeps that wait to be written, about.
    [[nodiscard]] std::uint64_t behind() const {
        const auto written = std::strtoull(controls.lblRecordDone.caption().c_str(), nullptr, 10);
        return scope.parts().sweeps.last()->number - began -
               std::min<std::uint64_t>(written, scope.parts().sweeps.last()->number - began);
    }

    void record() {
        began = scope.parts().sweeps.last()->number;
        scope.act([&] {
            scope.panel().mnurecord.click();
            controls.txtRecordFile.set_text(text_of_path(folder.path() / "run.csv"));
            controls.cmdRecord.click();
        });
    }

    /// Processor time of a sweep over `count` sweeps, milliseconds: that of the ticks, and of all.
    std::pair<double, double> cost(std::uint64_t count) {
        const double ticks = used_ms(CLOCK_THREAD_CPUTIME_ID);
        const double all = used_ms(CLOCK_PROCESS_CPUTIME_ID);
        tick_until(scope.parts().sweeps.last()->number + count);
        const auto each = [count](double ms) { return ms / static_cast<double>(count); };
        return {each(used_ms(CLOCK_THREAD_CPUTIME_ID) - ticks),
                each(used_ms(CLOCK_PROCESS_CPUTIME_ID) - all)};
    }

    TemporaryFolder folder;
    VirtualClock clock;
    simulator::Simulation simulation{clock, {}, 1};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    SystemFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope{{clock,
                 boxes,
                 messages,
                 simulation.bridge(),
                 files,
                 choosers,
                 {.settings = folder.path(), .program = folder.path(), .documents = folder.path()},
                 coder}};
    RecordDialog& dialog = scope.tools().record_dialog();
    RecordControls& controls = dialog.controls();
    std::uint64_t began = 0;
};

} // namespace
} // namespace kv408

int main(int argc, char** argv) {
    using namespace kv408;
    const auto minutes = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 60;
    constexpr std::uint64_t sweeps = 500;
    Recorded on;
    on.scope.start();
    on.tick_until(100);
    const auto [ticks_without, all_without] = on.cost(sweeps);
    on.record();
    on.tick_until(on.scope.parts().sweeps.last()->number + 100);
    const auto [ticks_with, all_with] = on.cost(sweeps);
    std::printf("a sweep takes, without and with a recording:\n"
                "  the ticks   %.3f ms  %.3f ms, %+.3f ms\n"
                "  everything  %.3f ms  %.3f ms, %+.3f ms\n",
                ticks_without, ticks_with, ticks_with - ticks_without, all_without, all_with,
                all_with - all_without);
    const long before = resident();
    const auto end = on.clock.now() + std::chrono::minutes(minutes);
    while (on.clock.now() < end) {
        on.tick_until(on.scope.parts().sweeps.last()->number + 100);
    }
    std::printf("after %llu minutes: %s sweeps recorded, %s missed, memory %ld KiB, %+ld KiB\n",
                static_cast<unsigned long long>(minutes),
                on.controls.lblRecordDone.caption().c_str(),
                on.controls.lblRecordMissed.caption().c_str(), resident(), resident() - before);
    return 0;
}
