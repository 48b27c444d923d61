#include "display/trace_raster.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <utility>

namespace kv408 {
namespace {

constexpr int touched_columns = 8; // that one number notes for a band

/// Rows that a run is painted in at a time: most runs are not longer.
constexpr int stroke_rows = 32;
using Stroke = std::array<std::uint8_t, stroke_rows>;

/// For 0..32 rows, the stroke that has all bits in the first so many and none in the others.
constexpr std::array<Stroke, stroke_rows + 1> first_rows_table() {
    std::array<Stroke, stroke_rows + 1> table = {};
    for (std::size_t count = 0; count < table.size(); ++count) {
        std::fill_n(table[count].begin(), count, std::uint8_t{0xFF});
    }
    return table;
}

constexpr auto first_rows = first_rows_table();

template <typename Data>
Data load(const std::uint8_t* from) {
    Data data = {};
    std::memcpy(&data, from, sizeof data);
    return data;
}

template <typename Data>
void store(std::uint8_t* to, Data data) {
    std::memcpy(to, &data, sizeof data);
}

/// Sets the bits of `number` in `rows` bytes from `at` on and leaves only those of `keep` besides.
inline void paint_bytes(std::uint8_t* at, int rows, std::uint8_t number, std::uint8_t keep) {
    for (; rows > stroke_rows; rows -= stroke_rows, at += stroke_rows) {
        auto bytes = load<Stroke>(at);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>((byte & keep) | number);
        }
        store(at, bytes);
    }
    const Stroke& selected = first_rows[static_cast<std::size_t>(rows)];
    auto bytes = load<Stroke>(at);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<std::uint8_t>((bytes[index] & (keep | ~selected[index])) |
                                                 (number & selected[index]));
    }
    store(at, bytes);
}

/// The tiles of a band in which any of eight columns was painted on.
Tiles::Stack stack_of(std::uint64_t touched) {
    static_assert(Tiles::side == touched_columns);
    for (int half = 32; half >= touched_columns; half /= 2) {
        touched |= touched >> half;
    }
    return static_cast<Tiles::Stack>(touched);
}

/// Number of the layers of `look` that can be seen. The oldest ones in the background colour have
/// nothing below to hide.
int visible_layers(const TraceLook& look, Pixel background) {
    int count = layers_of(look);
    while (count > 0 && layer_colour(look, count - 1) == background) {
        --count;
    }
    return count;
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

TraceRaster::TraceRaster(int height)
    : height_(height), bands_((height + band_rows - 1) / band_rows),
      // Room for a run to be painted beyond its end. An odd number, for the cells of a band not to
      // share the same few places of the cache.
      cells_(static_cast<std::size_t>((height + stroke_rows + band_rows - 1) / band_rows) | 1U),
      sheet_(block_columns * cells_),
      touched_(std::size_t{block_columns / touched_columns} * static_cast<std::size_t>(bands_)) {}

inline TraceRaster::Finder TraceRaster::finder() {
    return {sheet_.front().seen.data(), cells_ * band_rows, touched_.data(), bands_};
}

inline std::uint8_t* TraceRaster::seen(int column, int top) {
    return sheet_[static_cast<std::size_t>(column % block_columns) * cells_].seen.data() + top;
}

inline TraceRaster::Touched& TraceRaster::touched(int column, int band) {
    const auto first = static_cast<std::size_t>(column % block_columns / touched_columns) *
                       static_cast<std::size_t>(bands_);
    return touched_[first + static_cast<std::size_t>(band)];
}

void TraceRaster::paint(Columns columns, std::span<const TraceView> views, Pixel background) {
    assert(views.size() <= most_traces);
    choose_palette(views, background);
    assert(columns.left / block_columns == (columns.right - 1) / block_columns);
    for (int left = columns.left; left < columns.right; left += strip_columns) {
        const Columns strip = common(columns, {left, left + strip_columns});
        int shift = 0;
        for (const TraceView& view : views) {
            paint_trace(strip, view, background, shift);
            shift += trace_bits;
        }
    }
}

void TraceRaster::choose_palette(std::span<const TraceView> views, Pixel background) {
    palette_ = {};
    // What lies on top comes last, over all that may lie below.
    int step = 1;
    for (const TraceView& view : views) {
        for (int layer = visible_layers(view.look, background); layer > 0; --layer) {
            for (int below = 0; below < step; ++below) {
                palette_[static_cast<std::size_t>(layer * step + below)] = {
                    0, layer_colour(view.look, layer - 1)};
            }
        }
        step <<= trace_bits;
    }
}

void TraceRaster::paint_trace(Columns columns, const TraceView& view, Pixel background, int shift) {
    constexpr int trace_mask = (1 << trace_bits) - 1;
    const auto keep = static_cast<std::uint8_t>(~(trace_mask << shift));
    for (int layer = visible_layers(view.look, background) - 1; layer >= 0; --layer) {
        const bool seen = layer_colour(view.look, layer) != background;
        const Ink ink{static_cast<std::uint8_t>((seen ? layer + 1 : 0) << shift), keep};
        const Generation& generation = layer_of(view, layer);
        const Columns reached = common(columns, generation.columns());
        const std::array parts{Columns{reached.left, std::min(reached.right, view.gap.left)},
                               Columns{std::max(reached.left, view.gap.right), reached.right}};
        for (const Columns part : parts) {
            if (view.look.dots) {
                paint_dots(part, generation, ink);
            } else {
                paint_lines(part, generation, ink);
            }
        }
    }
}

void TraceRaster::paint_lines(Columns columns, const Generation& generation, Ink ink) {
    const auto runs = generation.runs();
    // By copies of what finds a column: painting bytes might change the members, for all that the
    // compiler knows.
    const Finder find = finder();
    for (int column = columns.left; column < columns.right; ++column) {
        paint_run(find, column, runs[static_cast<std::size_t>(column)], ink);
    }
}

void TraceRaster::paint_dots(Columns columns, const Generation& generation, Ink ink) {
    const auto points = generation.drawn_points();
    const Brush& brush = generation.brush();
    const Finder find = finder();
    const int height = height_;
    const int left = columns.left + brush.before() - brush.width();
    auto point = std::upper_bound(points.begin(), points.end(), left,
                                  [](int column, const Point& at) { return column < at.x; });
    for (; point != points.end() && point->x - brush.before() < columns.right; ++point) {
        int column = point->x - brush.before();
        for (const RowRun rows : brush.columns()) {
            if (column >= columns.left && column < columns.right) {
                const RowRun run{static_cast<std::int16_t>(std::max(point->y + rows.top, 0)),
                                 static_cast<std::int16_t>(std::min(point->y + rows.end, height))};
                paint_run(find, column, run, ink);
            }
            ++column;
        }
    }
}

inline void TraceRaster::paint_run(const Finder& find, int column, RowRun run, Ink ink) {
    if (run.top >= run.end) {
        return;
    }
    column %= block_columns;
    paint_bytes(find.sheet + static_cast<std::size_t>(column) * find.pitch + run.top,
                run.end - run.top, ink.number, ink.keep);
    Touched* const touched = find.touched + std::ptrdiff_t{column / touched_columns} * find.bands;
    const int shift = column % touched_columns * word_rows;
    const int last = (run.end - 1) / word_rows;
    for (int group = run.top / word_rows; group <= last;) {
        // All bits from the first group's to the last one's in this band.
        const int end = std::min(last, group | (word_rows - 1));
        touched[group / word_rows] |=
            ((Touched{2} << (end % word_rows)) - (Touched{1} << (group % word_rows))) << shift;
        group = end + 1;
    }
}

void TraceRaster::write_band(const Canvas& canvas, int top, Tiles& tiles) {
    const Columns columns = canvas.columns();
    for (int left = columns.left / touched_columns * touched_columns; left < columns.right;
         left += touched_columns) {
        Touched rest = std::exchange(touched(left, top / band_rows), 0);
        if (rest == 0) {
            continue;
        }
        tiles.add(left, top, stack_of(rest));
        if (rest == ~Touched{0}) {
            for (int row = top; row < std::min(top + band_rows, height_); row += word_rows) {
                write_block(canvas.surface(), left, row, std::min(word_rows, height_ - row));
            }
            continue;
        }
        for (; rest != 0; rest &= rest - 1) {
            const int bit = std::countr_zero(rest);
            const int row = top + bit % word_rows * word_rows;
            write_rows(canvas.surface(), left + bit / word_rows, row,
                       std::min(word_rows, height_ - row));
        }
    }
}

inline void TraceRaster::write_block(Surface& surface, int left, int top, int rows) {
    std::array<const std::uint8_t*, touched_columns> columns = {};
    for (int column = 0; column < touched_columns; ++column) {
        columns[static_cast<std::size_t>(column)] = seen(left + column, top);
    }
    for (int row = 0; row < rows; ++row) {
        using Pixels = std::array<Pixel, touched_columns>;
        Pixels colours = {};
        for (std::size_t index = 0; index < colours.size(); ++index) {
            colours[index] = palette_[columns[index][row]].colour;
        }
        // By bits and on copies, for several pixels to be told apart at a time.
        Pixel* const place = &surface.at(left, top + row);
        Pixels pixels = {};
        std::memcpy(&pixels, place, sizeof pixels);
        for (std::size_t index = 0; index < colours.size(); ++index) {
            pixels[index] &= colours[index] == 0 ? ~Pixel{0} : Pixel{0};
            pixels[index] |= colours[index];
        }
        std::memcpy(place, &pixels, sizeof pixels);
    }
    for (int column = 0; column < touched_columns; ++column) {
        store<std::uint64_t>(seen(left + column, top), 0);
    }
}

inline void TraceRaster::write_rows(Surface& surface, int column, int top, int rows) {
    std::uint8_t* const bytes = seen(column, top);
    Pixel* pixel = &surface.at(column, top);
    const int pitch = surface.width();
    for (int row = 0; row < rows; ++row, pixel += pitch) {
        const Dye& dye = palette_[bytes[row]];
        *pixel = (*pixel & dye.keep) | dye.colour;
    }
    store<std::uint64_t>(bytes, 0);
}

} // namespace kv408
