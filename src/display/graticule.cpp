#include "display/graticule.h"

#include <array>

#include "display/lines.h"
#include "display/shapes.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr int right_edge = plot::width - 1;   // 640
constexpr int bottom_edge = plot::height - 1; // 512
constexpr int dots_across = 51;               // five a division and one at the end
constexpr int dots_down = 41;
constexpr int edges = 3;       // both edges and the centre line between them
constexpr int tick_before = 3; // a tick is 7 pixels long: 3 before its line, 3 after, one on it
constexpr int tick_after = 4;

/// Place of dot or tick `number` along its line, counted from 0; a fifth of a division apart.
std::int32_t place(int number) {
    return round_to_int32(number * 12.8);
}

void draw_border(const Canvas& canvas, Pixel line) {
    constexpr std::array<Point, 5> corners{
        {{0, 0}, {right_edge, 0}, {right_edge, bottom_edge}, {0, bottom_edge}, {0, 0}}};
    draw_polyline(canvas, corners, line);
}

void draw_division_dots(const Canvas& canvas, Pixel line) {
    for (int y = plot::division; y < bottom_edge; y += plot::division) {
        for (int dot = 0; dot < dots_across; ++dot) {
            set_pixel(canvas, {place(dot), y}, line);
        }
    }
    for (int x = plot::division; x < right_edge; x += plot::division) {
        for (int dot = 0; dot < dots_down; ++dot) {
            set_pixel(canvas, {x, place(dot)}, line);
        }
    }
}

void draw_ticks(const Canvas& canvas, Pixel line) {
    for (int edge = 0; edge < edges; ++edge) {
        const int y = plot::centre_y * edge;
        for (int tick = 0; tick < dots_across; ++tick) {
            const std::int32_t x = place(tick);
            draw_line(canvas, {x, y - tick_before}, {x, y + tick_after}, Pen{line});
        }
        const int x = plot::centre_x * edge;
        for (int tick = 0; tick < dots_down; ++tick) {
            const std::int32_t tick_y = place(tick);
            draw_line(canvas, {x - tick_before, tick_y}, {x + tick_after, tick_y}, Pen{line});
        }
    }
}

} // namespace

void draw_graticule(const Canvas& canvas, Pixel background, Pixel line, bool dotted) {
    fill_rectangle(canvas, {0, 0, canvas.surface().width(), canvas.height()}, background);
    draw_border(canvas, line);
    if (dotted) {
        draw_division_dots(canvas, line);
        draw_ticks(canvas, line);
    }
}

} // namespace kv408
