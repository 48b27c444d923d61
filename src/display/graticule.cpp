#include "display/graticule.h"

#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr int right_edge = plot::width - 1;   // 640
constexpr int bottom_edge = plot::height - 1; // 512
constexpr int dots_across = 51;               // five per division and one at the end
constexpr int dots_down = 41;
constexpr int edges = 3;       // both edges and the centre line between them
constexpr int tick_before = 3; // a tick is 7 units long: 3 before its line, 3 after, one on it
constexpr int tick_after = 4;

/// Place of dot or tick `number` along its line, counted from 0; a fifth of a division apart.
std::int32_t place(int number) {
    return round_to_int32(number * 12.8);
}

void draw_border(const UnitPainter& painter, Pixel line) {
    for (const int y : {0, bottom_edge}) {
        painter.draw_row(y, 0, plot::width, line);
    }
    for (const int x : {0, right_edge}) {
        painter.draw_column(x, 0, plot::height, line);
    }
}

void draw_division_dots(const UnitPainter& painter, Pixel line) {
    for (int y = plot::division; y < bottom_edge; y += plot::division) {
        for (int dot = 0; dot < dots_across; ++dot) {
            painter.draw_dot(place(dot), y, line);
        }
    }
    for (int x = plot::division; x < right_edge; x += plot::division) {
        for (int dot = 0; dot < dots_down; ++dot) {
            painter.draw_dot(x, place(dot), line);
        }
    }
}

void draw_ticks(const UnitPainter& painter, Pixel line) {
    for (int edge = 0; edge < edges; ++edge) {
        const int y = plot::centre_y * edge;
        for (int tick = 0; tick < dots_across; ++tick) {
            painter.draw_column(place(tick), y - tick_before, y + tick_after, line);
        }
        const int x = plot::centre_x * edge;
        for (int tick = 0; tick < dots_down; ++tick) {
            painter.draw_row(place(tick), x - tick_before, x + tick_after, line);
        }
    }
}

} // namespace

void draw_graticule(const UnitPainter& painter, Pixel background, Pixel line, bool dotted) {
    painter.fill(background);
    draw_border(painter, line);
    if (dotted) {
        draw_division_dots(painter, line);
        draw_ticks(painter, line);
    }
}

} // namespace kv408
