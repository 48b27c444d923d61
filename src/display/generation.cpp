#include "display/generation.h"

#include <cstdlib>

namespace kv408 {
namespace {

/// Extends `run` by `rows` rows from row `y` toward row `target`.
void extend(RowRun& run, int y, int target, int rows) {
    if (target < y) {
        run.top = std::min(run.top, static_cast<std::int16_t>(y - rows));
    } else {
        run.end = std::max(run.end, static_cast<std::int16_t>(y + rows + 1));
    }
}

} // namespace

bool Generation::breaks_before(int index) const {
    return index > plot::first_point && index <= plot::last_point &&
           std::int64_t{point(index).x} != std::int64_t{point(index - 1).x} + 1;
}

RowRun Generation::run_of(int index) const {
    const int y = point(index).y;
    RowRun run{static_cast<std::int16_t>(y), static_cast<std::int16_t>(y + 1)};
    if (index < plot::last_point) {
        // The segment's middle row, when it has one, belongs to its left end.
        const int next = point(index + 1).y;
        extend(run, y, next, std::abs(next - y) / 2);
    }
    if (index > plot::first_point) {
        const int before = point(index - 1).y;
        extend(run, y, before, std::max(std::abs(before - y) - 1, 0) / 2);
        if (index == plot::last_point) {
            // A line leaves its last pixel out.
            (before < y ? run.end : run.top) = static_cast<std::int16_t>(before < y ? y : y + 1);
        }
    }
    if (run.top == run.end) {
        run = {static_cast<std::int16_t>(y), static_cast<std::int16_t>(y)};
    }
    return run;
}

void Generation::set_point(int index, Point point) {
    breaks_ -= (breaks_before(index) ? 1 : 0) + (breaks_before(index + 1) ? 1 : 0);
    points_[static_cast<std::size_t>(index)] = point;
    breaks_ += (breaks_before(index) ? 1 : 0) + (breaks_before(index + 1) ? 1 : 0);
    const int last = std::min(index + 1, plot::last_point);
    for (int near = std::max(index - 1, plot::first_point); near <= last; ++near) {
        runs_[static_cast<std::size_t>(near)] = run_of(near);
    }
}

} // namespace kv408
