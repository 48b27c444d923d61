#pragma once

#include <algorithm>

#include <QTabBar>
#include <QTest>

#include "mouse.h"
#include "program_on_bench.h"
#include "state/plot_geometry.h"

namespace kv408::ui {

/// The commands of one set-up, from the trigger to the start of the sweep.
inline const std::vector<int> set_up = {8, 27, 30, 35, 31, 32};

/// The program sweeping, and the mouse over its window.
struct Dragging : ProgramOnBench {
    [[nodiscard]] bool begin(QSize size = {1280, 800}) {
        window().resize(size);
        return run_until_sweeping();
    }

    /// Units of the window for `pixels` of the picture.
    [[nodiscard]] QPoint units(int right, int down) {
        return (window().plot().place_of(right, down) - window().plot().place_of(0, 0)).toPoint();
    }

    /// The place of (`x`, `y`) of the plot area on the plot widget.
    [[nodiscard]] QPoint on_plot(int x, int y) {
        return window().plot().place_of(plot::left + x, plot::top + y).toPoint();
    }

    /// Turns the wheel until the zero line of `channel` lies on `row` of the picture.
    void move_trace(int channel, int row) {
        panel().tabstrip2.select(channel + 1);
        panel().slider1.turn_to(plot::wheel_span - 2 * row);
    }

    /// Clicks the tab `index` of the strip `name`.
    void choose_tab(const char* name, int index) {
        auto* const tabs = widget<QTabBar>(name);
        QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {},
                          tabs->mapTo(&window(), tabs->tabRect(index).center()));
    }

    /// Whether the program uploads a whole set-up after the frame at index `from` and sweeps on.
    /// Requests for sweeps that were under way may come before it.
    [[nodiscard]] bool uploads_after(std::size_t from) {
        return QTest::qWaitFor([&] {
            std::vector<int> sent = codes(from);
            while (!sent.empty() && sent.front() == 32) {
                sent.erase(sent.begin());
            }
            return sent.size() > set_up.size() &&
                   std::equal(set_up.begin(), set_up.end(), sent.begin()) &&
                   panel().textstatus.text() == "Running";
        });
    }

    [[nodiscard]] const Parts& parts() { return program.scope().parts(); }
    [[nodiscard]] const CursorState& cursors() { return parts().cursor_state; }

    /// Whether only sweeps have been asked for since the frame at index `from`.
    [[nodiscard]] bool only_sweeps_since(std::size_t from) const {
        const std::vector<int> sent = codes(from);
        return std::all_of(sent.begin(), sent.end(), [](int code) { return code == 32; });
    }
};

} // namespace kv408::ui
