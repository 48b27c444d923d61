#pragma once

#include <chrono>
#include <vector>

#include <QTest>

#include "display/picture.h"
#include "host/clock.h"
#include "scope/parts.h"
#include "simulator/simulation.h"
#include "simulator/wire_log.h"
#include "support/fake_files.h"
#include "ui/program.h"

namespace kv408::ui {

/// Real time, in which sleeping takes none: what is slept is skipped.
class HurriedClock : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch() + skipped_;
    }
    void sleep(std::chrono::nanoseconds duration) override {
        skipped_ += std::max(duration, std::chrono::nanoseconds::zero());
    }
    [[nodiscard]] LocalTime local_time() const override { return date; }
    [[nodiscard]] std::chrono::system_clock::time_point time_of_day() const override {
        return std::chrono::system_clock::now();
    }

    /// What it says, until it is set again.
    LocalTime date = {.year = 2026, .month = 11, .day = 16, .hour = 1, .minute = 9, .second = 37};

private:
    std::chrono::nanoseconds skipped_{0};
};

/// The whole program with its window on a simulated instrument without noise.
struct ProgramOnBench {
    ProgramOnBench() {
        simulation.set_calibrated();
        simulator::silence(simulation.bench());
        window().on_closed([this] { ++closed; });
        // The screen of the tests is smaller than this.
        window().resize(window().sizeHint());
    }

    [[nodiscard]] MainWindow& window() { return program.window(); }
    [[nodiscard]] FrontPanel& panel() { return program.scope().panel(); }
    [[nodiscard]] const std::string& state() {
        return program.scope().parts().acquisition.scopestate;
    }

    /// Codes of all commands that the instrument has accepted, from the one at index `from` on.
    [[nodiscard]] std::vector<int> codes(std::size_t from) const {
        std::vector<int> codes;
        for (std::size_t index = from; index < log.frames.size(); ++index) {
            codes.push_back(log.frames[index].command.code);
        }
        return codes;
    }

    /// The command `code` among those from index `from` on; one of 0 while there is none.
    [[nodiscard]] simulator::Command first(std::int16_t code, std::size_t from) const {
        for (std::size_t index = from; index < log.frames.size(); ++index) {
            if (log.frames[index].command.code == code) {
                return log.frames[index].command;
            }
        }
        return {};
    }

    /// The window's widget named `name`; a missing one fails the test.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget* widget(const char* name) {
        auto* const found = window().findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("no widget %s", name);
        }
        return found;
    }

    /// Shows the window and waits until the program has swept and drawn.
    [[nodiscard]] bool run_until_sweeping() {
        window().show();
        window().activateWindow();
        constexpr int patience = 60'000; // the computer may have much else to do
        const auto sweeps = [this] {
            const auto& ready = program.scope().parts().acquisition.ready;
            return panel().textstatus.text() == "Running" && ready[0] && ready[1];
        };
        return QTest::qWaitForWindowExposed(&window(), patience) &&
               QTest::qWaitFor(sweeps, patience);
    }

    HurriedClock clock;
    simulator::WireLog log;
    simulator::Simulation simulation{clock, {}, 1, &log};
    FakeFiles files;
    Program program{clock, simulation.bridge(), files, fake_places()};
    int closed = 0; ///< how often the window said that it has closed for good
};

} // namespace kv408::ui
