// What a sweep costs with everything that works on finished sweeps: four references, statistics
// with their window open, the log, a recording, density and maths, each alone and all together;
// against the same without any of it, turn by turn in one run. Real window without a display,
// virtual clock: the program never waits.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QTimer>

#include "export/recorder.h"
#include "export/recording_files.h"
#include "host/system_files.h"
#include "processor_time.h"
#include "scope/parts.h"
#include "scope/tools.h"
#include "simulator/simulation.h"
#include "simulator/test_connections.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/temporary_folder.h"
#include "support/virtual_clock.h"
#include "ui/look.h"
#include "ui/program.h"

namespace {

using namespace kv408;
using namespace std::chrono_literals;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr int turns = 15;
constexpr int sweeps_per_turn = 50;

/// What works on the sweeps in a turn.
struct Tools {
    const char* name = "";
    bool references = false;
    bool statistics = false; ///< with their window open
    bool log = false;        ///< of the statistics
    bool recording = false;
    bool density = false;        ///< of both channels
    bool density_window = false; ///< open beside it
    bool eye = false;            ///< random data at CH1, whose eye has jitter and noise
    bool eye_windows = false;    ///< those of jitter, eye and mask open beside the density
    bool maths = false;          ///< the difference of the channels, and a derivative
    bool mean = false;           ///< a mean and an envelope of 16 sweeps
    bool maths_window = false;   ///< open beside them
};

/// The first is what the others are compared with, the last all of them.
constexpr std::array<Tools, 13> cases = {{
    {.name = "no tool"},
    {.name = "four references", .references = true},
    {.name = "open statistics", .statistics = true},
    {.name = "open statistics and log", .statistics = true, .log = true},
    {.name = "recording", .recording = true},
    {.name = "density", .density = true},
    {.name = "density, window open", .density = true, .density_window = true},
    {.name = "density of an eye", .density = true, .eye = true},
    {.name = "its jitter, eye, mask open", .density = true, .eye = true, .eye_windows = true},
    {.name = "two maths traces", .maths = true},
    {.name = "mean and envelope", .mean = true},
    {.name = "two, window open", .maths = true, .maths_window = true},
    {.name = "all of them", .references = true, .statistics = true, .log = true, .recording = true},
}};

/// Memory that the process has in use, kilobytes.
long resident() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    }
    return 0;
}

/// The program in its window on the simulated instrument, with the tools on or off.
class ProgramWithTools {
public:
    ProgramWithTools() {
        // No tick but those by hand.
        program_.window().findChild<QTimer*>(QStringLiteral("Timer1"))->setInterval(1h);
        program_.window().resize(1280, 800);
        program_.window().show();
        while (!program_.scope().parts().program.loaded) {
            QApplication::processEvents();
        }
        run(50);
    }

    void use(const Tools& tools) {
        Scope& scope = program_.scope();
        scope.act([&] {
            for (std::size_t place = 0; tools.references && place < References::count; ++place) {
                scope.tools().references().controls(place).mnuReferenceKeepCH1.click();
            }
            if (tools.statistics) {
                scope.panel().mnustatistics.click();
            }
            if (tools.density_window) {
                scope.panel().mnudensity.click();
            }
            if (tools.eye) {
                simulator::connect(simulation_.bench(),
                                   simulator::TestConnection::eye_jitter_noise);
            }
            if (tools.eye_windows) {
                scope.tools().jitter().controls().mnujitter.click();
                scope.tools().eye().controls().mnueye.click();
                scope.tools().mask().controls().mnumask.click();
            }
            if (tools.maths || tools.mean) {
                compute(tools.maths ? MathsFunction::difference : MathsFunction::mean,
                        tools.maths ? MathsFunction::derivative : MathsFunction::envelope);
            }
            if (tools.maths_window) {
                scope.tools().maths().controls().mnumaths.click();
            }
            if (tools.density) {
                scope.tools().density().controls().chkDensity.press(true);
            }
            if (tools.log) {
                scope.tools().statistics().begin_log(folder_.path() / "log.csv");
            }
        });
        if (tools.recording) {
            SavedFile begun;
            recorder_ = std::make_unique<Recorder>(std::make_unique<OneRecordingFile>(
                files_, folder_.path() / "run.csv", true, begun));
        }
    }

    void leave(const Tools& tools) {
        Scope& scope = program_.scope();
        scope.act([&] {
            for (std::size_t place = 0; tools.references && place < References::count; ++place) {
                scope.tools().references().controls(place).mnuReferenceClear.click();
            }
            if (tools.log) {
                scope.tools().statistics().controls().cmdStatisticsLog.click(); // ends it
            }
            if (tools.statistics) {
                scope.tools().statistics().close();
            }
            if (tools.density) {
                scope.tools().density().controls().chkDensity.press(false);
            }
            if (tools.density_window) {
                scope.tools().density().close();
            }
            if (tools.eye) {
                simulator::connect(simulation_.bench(), simulator::TestConnection::delivery);
            }
            if (tools.eye_windows) {
                scope.tools().jitter().close();
                scope.tools().eye().close();
                scope.tools().mask().close();
            }
            if (tools.maths || tools.mean) {
                compute(MathsFunction::off, MathsFunction::off);
            }
            if (tools.maths_window) {
                program_.window().findChild<QWidget*>(QStringLiteral("frmMaths"))->close();
            }
        });
        recorder_.reset();
        while (scope.tools().statistics().logging()) { // a tick finds what waited written
            run(1);
        }
    }

    /// Lets `count` sweeps of both channels come and be shown; each channel's block takes a tick.
    void run(int count) {
        for (int sweep = 0; sweep < count;) {
            clock_.advance(100ms - clock_.now() % 100ms);
            program_.scope().tick();
            const auto& last = program_.scope().parts().sweeps.last_complete();
            if (last && last->number != last_number_) {
                last_number_ = last->number;
                ++sweep;
                if (recorder_) {
                    recorder_->add(exported_sweep(*last, last->came, {}));
                }
            }
            QApplication::processEvents();
        }
        if (recorder_) {
            recorder_->wait_until_written();
        }
    }

private:
    void compute(MathsFunction first, MathsFunction second) {
        MathsDialog& maths = program_.scope().tools().maths();
        maths.tool(0).controls().cmbMathsFunction.set_index(static_cast<int>(first));
        maths.tool(1).controls().cmbMathsFunction.set_index(static_cast<int>(second));
    }

    VirtualClock clock_;
    simulator::Simulation simulation_{clock_, {}, 1, nullptr};
    TemporaryFolder folder_;
    SystemFiles files_;
    ui::Program program_{clock_,
                         simulation_.bridge(),
                         files_,
                         {.settings = folder_.path(), .program = folder_.path()}};
    std::unique_ptr<Recorder> recorder_;
    std::uint64_t last_number_ = 0;
};

Microseconds a_sweep(ProgramWithTools& subject, const Tools& tools) {
    constexpr int sweeps_until_shown = 10; // opening a window is no part of a sweep
    subject.use(tools);
    subject.run(sweeps_until_shown);
    const Microseconds before = processor_time();
    subject.run(sweeps_per_turn);
    const Microseconds after = processor_time();
    subject.leave(tools);
    return (after - before) / sweeps_per_turn;
}

Microseconds median(std::vector<Microseconds> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ui::apply_look(ui::Look::dark);
    ProgramWithTools subject;
    std::array<std::vector<Microseconds>, cases.size()> times;
    for (int turn = 0; turn < turns; ++turn) {
        for (std::size_t one = 0; one < cases.size(); ++one) {
            times[one].push_back(a_sweep(subject, cases[one]));
        }
    }
    std::printf("processor time of a sweep, median of %d turns of %d sweeps:\n", turns,
                sweeps_per_turn);
    const Microseconds without = median(times[0]);
    for (std::size_t one = 0; one < cases.size(); ++one) {
        const Microseconds with = median(times[one]);
        std::printf("%-24s %5.0f us %+5.0f us\n", cases[one].name, with.count(),
                    (with - without).count());
    }
    std::printf("the aim: all of them at most +300 us\n");
    subject.use(cases.back());
    constexpr int sweeps_of_ten_minutes = 3000;
    subject.run(sweeps_of_ten_minutes);
    const long before = resident();
    subject.run(sweeps_of_ten_minutes);
    std::printf("memory over ten more minutes with them: %+ld kB of %ld\n", resident() - before,
                before);
    return 0;
}
