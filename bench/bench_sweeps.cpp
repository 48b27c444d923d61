// How close the sweeps come to what the link allows: bytes of ten bits at 833000 baud and the time
// that the instrument takes for its samples. Once on a virtual clock, which leaves only the waits
// of the exchange, then in real time with the program's own work, without the window and in it.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

#include <QApplication>
#include <QTimer>

#include "host/system_clock.h"
#include "processor_time.h"
#include "simulator/simulation.h"
#include "simulator/sweep.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"
#include "ui/look.h"
#include "ui/program.h"

namespace {

using namespace kv408;
using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr nanoseconds tick_interval = 100ms;
constexpr std::chrono::milliseconds settling_to_sweep = 2s;
constexpr std::chrono::milliseconds sweeping_measured = 10s;
constexpr std::size_t points_per_block = 650;
constexpr std::size_t exchanges_per_pass = 1280; // 640 points of two channels
constexpr Byte block_command = 32;
constexpr Byte point_command = 26;

/// The real clock with exact sleeps: what the system oversleeps is not the program's doing.
class ExactClock : public SystemClock {
public:
    void sleep(nanoseconds duration) override {
        constexpr nanoseconds most_oversleeping = 1ms;
        const nanoseconds before = processor_time();
        const nanoseconds end = now() + duration;
        SystemClock::sleep(duration - most_oversleeping);
        while (now() < end) {
        }
        waiting_ += processor_time() - before;
    }

    /// Processor time outside of all sleeps so far.
    [[nodiscard]] nanoseconds work() const { return processor_time() - waiting_; }

private:
    nanoseconds waiting_{0};
};

/// What an exchange takes the link and the instrument: a frame of eight bytes, `samples` samples
/// taken, two bytes each sent.
nanoseconds own_time(std::size_t samples) {
    using simulator::wire_time;
    return wire_time(8, simulator::instrument_baud_rate) +
           static_cast<int>(samples) * simulator::conversion_time +
           wire_time(2 * samples, simulator::instrument_baud_rate);
}

double per_second(std::size_t count) {
    return static_cast<double>(count) / std::chrono::duration<double>(sweeping_measured).count();
}

/// What a stretch of sweeping left behind.
struct Sweeping {
    std::vector<simulator::WireFrame> frames; ///< that asked for samples
    Microseconds work{0};                     ///< processor time outside of all waiting
};

void print_blocks(const Sweeping& sweeping) {
    const Microseconds own = own_time(points_per_block);
    const auto count = sweeping.frames.size();
    std::printf("  blocks: %5.2f per second; the link and the instrument alone: %5.2f\n",
                per_second(count), 1e6 / own.count());
    std::printf("  a block takes %.0f us of the processor\n",
                sweeping.work.count() / static_cast<double>(count));
}

/// Times from the first to the last exchange of each whole pass, the shortest first.
std::vector<Microseconds> pass_times(const std::vector<simulator::WireFrame>& frames) {
    std::vector<Microseconds> times;
    for (std::size_t first = 0; first + exchanges_per_pass <= frames.size(); ++first) {
        // Every pass begins with the same arguments.
        if (frames[first].command.arguments == frames.front().command.arguments) {
            times.emplace_back(frames[first + exchanges_per_pass - 1].time - frames[first].time);
        }
    }
    std::sort(times.begin(), times.end());
    return times;
}

void print_passes(const Sweeping& sweeping) {
    const auto times = pass_times(sweeping.frames);
    if (times.empty()) {
        std::printf("  no pass was completed\n");
        return;
    }
    const Microseconds own = own_time(1) * static_cast<double>(exchanges_per_pass - 1);
    std::printf("  passes: %5.2f per second; the link and the instrument alone: %5.2f\n",
                per_second(times.size()), 1e6 / own.count());
    std::printf("  a pass takes %.3f times the link's own time (median; %.3f .. %.3f)\n",
                times[times.size() / 2] / own, times.front() / own, times.back() / own);
    std::printf("  a point of one channel takes %.1f us of the link and %.1f us of the processor\n",
                Microseconds(own_time(1)).count(),
                sweeping.work.count() / static_cast<double>(sweeping.frames.size()));
}

void choose_time_base(Scope& scope, const char* text) {
    ListBox& list = scope.panel().seltimediv;
    const auto& entries = list.entries();
    const auto found = std::find(entries.begin(), entries.end(), text);
    if (found != entries.end()) {
        scope.act([&] { list.set_index(static_cast<int>(found - entries.begin())); });
    }
}

/// The program whose sweeps are measured, and what it runs on.
struct SweepingProgram {
    Scope& scope;
    simulator::WireLog& log;
    std::function<void(std::chrono::milliseconds)> run_for; ///< lets it tick
    std::function<nanoseconds()> work;                      ///< processor time outside of waiting
};

/// Lets `subject` sweep at `time_base`; `code` is the command that then asks for samples.
Sweeping sweep(SweepingProgram& subject, const char* time_base, Byte code) {
    choose_time_base(subject.scope, time_base);
    subject.run_for(settling_to_sweep);
    subject.log = {};
    const nanoseconds before = subject.work();
    subject.run_for(sweeping_measured);
    Sweeping sweeping{{}, subject.work() - before};
    std::copy_if(subject.log.frames.begin(), subject.log.frames.end(),
                 std::back_inserter(sweeping.frames),
                 [code](const auto& frame) { return frame.command.code == code; });
    return sweeping;
}

void measure(const char* title, SweepingProgram subject) {
    std::printf("%s\n", title);
    print_blocks(sweep(subject, "20ns/div", block_command));
    print_passes(sweep(subject, "500ns/div", point_command));
}

/// The program without its window, which ticks on `clock`.
void measure_without_window(const char* title, Clock& clock, std::function<nanoseconds()> work) {
    simulator::WireLog log;
    simulator::Simulation simulation(clock, {}, 1, &log);
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope(
        {clock, boxes, messages, simulation.bridge(), files, choosers, fake_places(), coder});
    scope.start();
    const auto run_for = [&](nanoseconds duration) {
        for (const nanoseconds end = clock.now() + duration; clock.now() < end; scope.tick()) {
            clock.sleep(tick_interval - clock.now() % tick_interval);
        }
    };
    measure(title, {scope, log, run_for, std::move(work)});
}

void measure_window(const char* title) {
    ExactClock clock;
    simulator::WireLog log;
    simulator::Simulation simulation(clock, {}, 1, &log);
    FakeFiles files;
    ui::Program program(clock, simulation.bridge(), files, fake_places());
    program.window().resize(1280, 800);
    program.window().show();
    const auto run_for = [](std::chrono::milliseconds duration) {
        QTimer::singleShot(duration, Qt::PreciseTimer, qApp, [] { QApplication::exit(); });
        QApplication::exec();
    };
    measure(title, {program.scope(), log, run_for, [&clock] { return clock.work(); }});
    program.window().close();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ui::apply_look(ui::Look::dark);
    VirtualClock virtual_clock;
    measure_without_window("The exchange alone, on a virtual clock:", virtual_clock,
                           processor_time);
    ExactClock clock;
    measure_without_window("In real time, without the window:", clock,
                           [&clock] { return clock.work(); });
    measure_window("In real time, in the window:");
    return 0;
}
