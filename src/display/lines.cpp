#include "display/lines.h"

#include <cstdlib>

namespace kv408 {
namespace {

/// A line seen along the axis in which it is longer.
struct Course {
    std::int64_t start = 0;      ///< coordinate along the long axis of the first pixel
    std::int64_t across = 0;     ///< coordinate along the short axis of the first pixel
    std::int64_t step = 1;       ///< direction along the long axis, 1 or -1
    std::int64_t drift = 1;      ///< direction along the short axis, 1 or -1
    std::uint64_t length = 0;    ///< pixels of the line
    std::uint64_t deviation = 0; ///< distance between the ends along the short axis
};

/// The pixels `first` up to, not including, `last` of a course, counted from its start.
struct Stretch {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

std::uint64_t distance(std::int32_t from, std::int32_t to) {
    return static_cast<std::uint64_t>(std::abs(std::int64_t{to} - std::int64_t{from}));
}

std::int64_t direction(std::int32_t from, std::int32_t to) {
    return to < from ? -1 : 1;
}

/// The pixels of `course` whose long coordinate lies in `lowest` up to, not including, `end`.
Stretch visible(const Course& course, std::int64_t lowest, std::int64_t end) {
    const std::int64_t skipped = course.step > 0 ? lowest - course.start : course.start - (end - 1);
    const std::int64_t reached = course.step > 0 ? end - course.start : course.start - lowest + 1;
    return {std::max<std::int64_t>(skipped, 0),
            std::min(reached, static_cast<std::int64_t>(course.length))};
}

/// Calls `plot(along, across)` for every pixel of `stretch`.
template <typename Plot>
void walk(const Course& course, Stretch stretch, const Plot& plot) {
    if (stretch.first >= stretch.last) {
        return;
    }
    // Both factors stay below 2^32, so the product just fits.
    const std::uint64_t travelled = static_cast<std::uint64_t>(stretch.first) * course.deviation;
    auto whole = static_cast<std::int64_t>(travelled / course.length);
    std::uint64_t rest = travelled % course.length;
    for (std::int64_t index = stretch.first; index < stretch.last; ++index) {
        // Halves go to the smaller coordinate: up to them when drifting down, from them otherwise.
        const std::uint64_t twice = 2 * rest;
        const bool next = course.drift > 0 ? twice > course.length : twice >= course.length;
        plot(course.start + index * course.step,
             course.across + (whole + (next ? 1 : 0)) * course.drift);
        rest += course.deviation;
        if (rest >= course.length) {
            rest -= course.length;
            ++whole;
        }
    }
}

void put(const Canvas& canvas, std::int64_t x, std::int64_t y, const Brush& brush, Pixel colour) {
    std::int64_t column = x - brush.before();
    for (const RowRun rows : brush.columns()) {
        for (std::int64_t row = y + rows.top; row < y + rows.end; ++row) {
            if (canvas.contains(column, row)) {
                canvas.surface().at(static_cast<int>(column), static_cast<int>(row)) = colour;
            }
        }
        ++column;
    }
}

} // namespace

void draw_dot(const Canvas& canvas, Point point, const Brush& brush, Pixel colour) {
    put(canvas, point.x, point.y, brush, colour);
}

void draw_line(const Canvas& canvas, Point from, Point to, const Brush& brush, Pixel colour) {
    const std::uint64_t wide = distance(from.x, to.x);
    const std::uint64_t high = distance(from.y, to.y);
    const auto plot = [&](std::int64_t x, std::int64_t y) { put(canvas, x, y, brush, colour); };
    // From further away no pixel of the line can be seen.
    const int reach = brush.width();
    if (wide >= high) {
        const Course course{from.x, from.y, direction(from.x, to.x), direction(from.y, to.y),
                            wide,   high};
        walk(course, visible(course, canvas.columns().left - reach, canvas.columns().right + reach),
             plot);
        return;
    }
    const Course course{from.y, from.x, direction(from.y, to.y), direction(from.x, to.x),
                        high,   wide};
    walk(course, visible(course, -reach, canvas.height() + reach),
         [&plot](std::int64_t along, std::int64_t across) { plot(across, along); });
}

void draw_polyline(const Canvas& canvas, std::span<const Point> points, const Brush& brush,
                   Pixel colour) {
    for (std::size_t index = 1; index < points.size(); ++index) {
        draw_line(canvas, points[index - 1], points[index], brush, colour);
    }
}

} // namespace kv408
