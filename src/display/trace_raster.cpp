#include "display/trace_raster.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace kv408 {
namespace {

/// Number of the layers of `look` that can be seen. The oldest ones in the background colour have
/// nothing below to hide.
int visible_layers(const TraceLook& look, Pixel background) {
    int count = layers_of(look);
    while (count > 0 && layer_colour(look, count - 1) == background) {
        --count;
    }
    return count;
}

/// The number of layer `layer` of the trace at `place` among those drawn together, 0 the lowest:
/// the higher one is seen.
std::uint8_t number_of(std::size_t place, int layer) {
    return static_cast<std::uint8_t>((place + 1) * most_layers - static_cast<std::size_t>(layer));
}

std::size_t stack_of(int column) {
    return static_cast<std::size_t>(column % TraceRaster::block_columns / Tiles::side);
}

/// The pixels `left` and `right` as they lie beside each other.
std::uint64_t pair_of(Pixel left, Pixel right) {
    return std::bit_cast<std::uint64_t>(std::array{left, right});
}

} // namespace

bool TraceRaster::can_draw(const TraceView& view) {
    for (int layer = 0; layer < layers_of(view.look); ++layer) {
        const Generation& generation = layer_of(view, layer);
        if (!generation.is_uniform() ||
            (view.look.dots &&
             generation.drawn_points().front().x != layer_of(view, 0).drawn_points().front().x)) {
            return false;
        }
    }
    return true;
}

std::size_t TraceRaster::drawn_at_a_time(std::span<const TraceView> views, Pixel background) {
    const auto hides = [background](const TraceView& view) {
        const int layers = visible_layers(view.look, background);
        for (int layer = 0; layer < layers; ++layer) {
            if (layer_colour(view.look, layer) == background) {
                return true;
            }
        }
        return false;
    };
    return std::any_of(views.begin(), views.end(), hides) ? 1 : most_traces;
}

TraceRaster::TraceRaster(int height)
    : height_(height), sheet_(height), covered_(block_columns, height), dyes_(1) {}

void TraceRaster::paint(Columns columns, std::span<const TraceView> views, Pixel background) {
    static_assert(most_traces * most_layers < numbers);
    assert(views.size() <= most_traces);
    assert(columns.left / block_columns == (columns.right - 1) / block_columns);
    choose_palette(views, background);
    for (auto& trace : painted_) {
        trace.fill(no_rows);
    }
    for (int left = columns.left; left < columns.right; left += strip_columns) {
        const Columns strip = common(columns, {left, left + strip_columns});
        for (std::size_t place = 0; place < views.size(); ++place) {
            paint_trace(strip, views[place], background, place);
        }
    }
    note_covered();
}

void TraceRaster::note_covered() {
    covered_.clear();
    for (const auto& trace : painted_) {
        int left = 0;
        for (const RowRun rows : trace) {
            covered_.add({left, rows.top, left + Tiles::side, rows.end});
            left += Tiles::side;
        }
    }
}

void TraceRaster::choose_palette(std::span<const TraceView> views, Pixel background) {
    std::array<Pixel, numbers> palette = {};
    for (std::size_t place = 0; place < views.size(); ++place) {
        const TraceLook& look = views[place].look;
        for (int layer = 0; layer < visible_layers(look, background); ++layer) {
            const Pixel colour = layer_colour(look, layer);
            palette[number_of(place, layer)] = colour == background ? 0 : colour;
        }
    }
    if (palette == palette_) {
        return; // at first no number has a colour, and none is painted
    }
    palette_ = palette;
    Dyes& dyes = dyes_.front();
    const auto kept = [](Pixel colour) { return colour == 0 ? ~Pixel{0} : Pixel{0}; };
    for (std::size_t right = 0; right <= most_traces * most_layers; ++right) {
        for (std::size_t left = 0; left <= most_traces * most_layers; ++left) {
            const std::size_t two = left | right << number_bits;
            dyes.keep[two] = pair_of(kept(palette[left]), kept(palette[right]));
            dyes.colour[two] = pair_of(palette[left], palette[right]);
        }
    }
}

void TraceRaster::paint_trace(Columns columns, const TraceView& view, Pixel background,
                              std::size_t place) {
    for (int layer = visible_layers(view.look, background) - 1; layer >= 0; --layer) {
        const Generation& generation = layer_of(view, layer);
        const Columns reached = common(columns, generation.columns());
        const std::array parts{Columns{reached.left, std::min(reached.right, view.gap.left)},
                               Columns{std::max(reached.left, view.gap.right), reached.right}};
        for (const Columns part : parts) {
            if (view.look.dots) {
                paint_dots(part, generation, number_of(place, layer), place);
            } else {
                paint_lines(part, generation, number_of(place, layer), place);
            }
        }
    }
}

void TraceRaster::paint_lines(Columns columns, const Generation& generation, std::uint8_t number,
                              std::size_t place) {
    const auto runs = generation.runs();
    for (int column = columns.left; column < columns.right;) {
        RowRun& painted = painted_[place][stack_of(column)];
        RowRun all = no_rows;
        const int end = std::min(column / Tiles::side * Tiles::side + Tiles::side, columns.right);
        for (; column < end; ++column) {
            const RowRun run = runs[static_cast<std::size_t>(column)];
            if (run.top < run.end) {
                extend(all, run.top, run.end);
                sheet_.paint(column % block_columns, run, number);
            }
        }
        extend(painted, all.top, all.end);
    }
}

void TraceRaster::paint_dots(Columns columns, const Generation& generation, std::uint8_t number,
                             std::size_t place) {
    const auto points = generation.drawn_points();
    const Brush& brush = generation.brush();
    const int left = columns.left + brush.before() - brush.width();
    auto point = std::upper_bound(points.begin(), points.end(), left,
                                  [](int column, const Point& at) { return column < at.x; });
    for (; point != points.end() && point->x - brush.before() < columns.right; ++point) {
        int column = point->x - brush.before();
        for (const RowRun rows : brush.columns()) {
            const RowRun run{static_cast<std::int16_t>(std::max(point->y + rows.top, 0)),
                             static_cast<std::int16_t>(std::min(point->y + rows.end, height_))};
            if (column >= columns.left && column < columns.right && run.top < run.end) {
                extend(painted_[place][stack_of(column)], run.top, run.end);
                sheet_.paint(column % block_columns, run, number);
            }
            ++column;
        }
    }
}

void TraceRaster::take_covered_out(Tiles& tiles, Columns columns, int top) const {
    for (int left = columns.left / Tiles::side * Tiles::side; left < columns.right;
         left += Tiles::side) {
        tiles.remove(left, top, covered_.stack(left % block_columns, top));
    }
}

void TraceRaster::write_band(const Canvas& canvas, int top, const Backdrop& backdrop,
                             Tiles& tiles) {
    constexpr int tiles_of_piece = RunSheet::piece_rows / Tiles::side;
    constexpr unsigned whole_piece = (1U << tiles_of_piece) - 1;
    const Columns columns = canvas.columns();
    for (int left = columns.left / Tiles::side * Tiles::side; left < columns.right;
         left += Tiles::side) {
        const Tiles::Stack stack = covered_.stack(left % block_columns, top);
        tiles.add(left, top, stack);
        int row = top;
        for (unsigned rest = stack; rest != 0; rest >>= tiles_of_piece) {
            if ((rest & whole_piece) != 0) {
                write_piece(canvas, {left, row}, rest & whole_piece, backdrop);
            }
            row += RunSheet::piece_rows;
        }
    }
}

/// Takes what begins at `corner` off the sheet and writes those of its tiles whose bits `tiles`
/// has, the lowest for the upper one.
void TraceRaster::write_piece(const Canvas& canvas, Point corner, unsigned tiles,
                              const Backdrop& backdrop) {
    int column = corner.x % block_columns;
    for (RunSheet::TwoPieces& two : places_) {
        sheet_.take_two(column, corner.y, number_bits, two);
        column += 2;
    }
    std::array<Pixel, Tiles::side> bare = {};
    bare.fill(backdrop.ground);
    const bool whole =
        canvas.columns().left <= corner.x && canvas.columns().right >= corner.x + Tiles::side;
    for (int first = 0; tiles != 0; first += Tiles::side, tiles >>= 1U) {
        if ((tiles & 1U) == 0) {
            continue;
        }
        const Point at{corner.x, corner.y + first};
        const bool drawn = backdrop.drawn == nullptr || backdrop.drawn->has(at.x, at.y);
        const Under under = drawn
                                ? Under{&backdrop.surface.row(at.y)[static_cast<std::size_t>(at.x)],
                                        backdrop.surface.width()}
                                : Under{bare.data(), 0};
        if (whole) {
            write_tile(canvas.surface(), at, first, under);
        } else {
            write_part(canvas, at, first, under);
        }
    }
}

/// Writes a tile whose first row is row `first` of what was taken.
void TraceRaster::write_tile(Surface& surface, Point corner, int first, const Under& under) const {
    const Dyes& dyes = dyes_.front();
    const int end = first + std::min(Tiles::side, height_ - corner.y);
    const int pitch = surface.width();
    const Pixel* from = under.corner;
    Pixel* to = &surface.at(corner.x, corner.y);
    for (int row = first; row < end; ++row, from += under.pitch, to += pitch) {
        for (std::size_t pair = 0; pair < pairs; ++pair) {
            const std::size_t two = places_[pair][row];
            Pair pixels = 0;
            std::memcpy(&pixels, from + 2 * pair, sizeof pixels);
            pixels = (pixels & dyes.keep[two]) | dyes.colour[two];
            std::memcpy(to + 2 * pair, &pixels, sizeof pixels);
        }
    }
}

/// The same for a tile that only in part lies on `canvas`, pixel by pixel.
void TraceRaster::write_part(const Canvas& canvas, Point corner, int first,
                             const Under& under) const {
    const int left = std::max(canvas.columns().left - corner.x, 0);
    const int right = std::min(canvas.columns().right - corner.x, Tiles::side);
    const int end = first + std::min(Tiles::side, height_ - corner.y);
    const int pitch = canvas.surface().width();
    const Pixel* from = under.corner;
    Pixel* to = &canvas.surface().at(corner.x, corner.y);
    for (int row = first; row < end; ++row, from += under.pitch, to += pitch) {
        for (int column = left; column < right; ++column) {
            const std::size_t two = places_[column / 2][row];
            const Pixel colour = palette_[(two >> (column % 2 * number_bits)) % numbers];
            to[column] = colour == 0 ? from[column] : colour;
        }
    }
}

} // namespace kv408
