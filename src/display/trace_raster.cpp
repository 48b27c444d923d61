#include "display/trace_raster.h"

#include <algorithm>
#include <bit>
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
            (view.look.dots && generation.columns() != layer_of(view, 0).columns())) {
            return false;
        }
    }
    return true;
}

TraceRaster::TraceRaster() : sheet_(plot::width), column_touched_(plot::width) {
    touched_.fill(std::vector<Touched>(plot::width / touched_columns + 1));
}

void TraceRaster::paint(Columns columns, std::span<const TraceView, 2> views, Pixel background) {
    choose_palette(views, background);
    for (int left = columns.left; left < columns.right; left += block_columns) {
        const Columns block = common(columns, {left, left + block_columns});
        paint_trace(block, views[1], background, 0);
        paint_trace(block, views[0], background, channel_bits);
        note_touched(block);
    }
}

void TraceRaster::choose_palette(std::span<const TraceView, 2> views, Pixel background) {
    const int above = visible_layers(views[0].look, background);
    const int below = visible_layers(views[1].look, background);
    for (int upper = 0; upper <= above; ++upper) {
        for (int lower = upper == 0 ? 1 : 0; lower <= below; ++lower) {
            palette_[static_cast<std::size_t>(upper << channel_bits | lower)] = {
                0, upper > 0 ? layer_colour(views[0].look, upper - 1)
                             : layer_colour(views[1].look, lower - 1)};
        }
    }
}

void TraceRaster::paint_trace(Columns columns, const TraceView& view, Pixel background, int shift) {
    constexpr int channel_mask = (1 << channel_bits) - 1;
    const auto keep = static_cast<std::uint8_t>(~(channel_mask << shift));
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
    const int first = generation.columns().left;
    for (int column = columns.left; column < columns.right; ++column) {
        const RowRun run = runs[static_cast<std::size_t>(column - first)];
        paint_run(column, run.top, run.end, ink);
    }
}

void TraceRaster::paint_dots(Columns columns, const Generation& generation, Ink ink) {
    const auto points = generation.drawn_points();
    const int first = generation.columns().left;
    for (int column = columns.left; column < columns.right; ++column) {
        const int y = points[static_cast<std::size_t>(column - first)].y;
        paint_run(column, y, y + 1, ink);
    }
}

inline void TraceRaster::paint_run(int column, int top, int end, Ink ink) {
    const auto place = static_cast<std::size_t>(column);
    paint_bytes(sheet_[place].seen.data() + top, end - top, ink.number, ink.keep);
    // All bits from the first group's to the last one's; of an empty run at most one too many,
    // which only makes pixels be looked at that stay.
    column_touched_[place] |=
        (std::uint64_t{2} << ((end - 1) / word_rows)) - (std::uint64_t{1} << (top / word_rows));
}

void TraceRaster::note_touched(Columns columns) {
    for (int column = columns.left; column < columns.right; ++column) {
        const std::uint64_t groups =
            std::exchange(column_touched_[static_cast<std::size_t>(column)], 0);
        const auto place = static_cast<std::size_t>(column / touched_columns);
        const int shift = column % touched_columns * word_rows;
        for (std::size_t band = 0; band < touched_.size(); ++band) {
            touched_[band][place] |= (groups >> (band * word_rows) & 0xFFU) << shift;
        }
    }
}

void TraceRaster::write_band(const Canvas& canvas, int top) {
    const auto band = static_cast<std::size_t>(top / band_rows);
    if (band >= touched_.size()) {
        return;
    }
    const Columns columns = canvas.columns();
    for (int left = columns.left / touched_columns * touched_columns; left < columns.right;
         left += touched_columns) {
        Touched rest =
            std::exchange(touched_[band][static_cast<std::size_t>(left / touched_columns)], 0);
        if (rest == ~Touched{0}) {
            for (int group = 0; group < word_rows; ++group) {
                write_block(canvas.surface(), left, top + group * word_rows);
            }
            continue;
        }
        for (; rest != 0; rest &= rest - 1) {
            const int bit = std::countr_zero(rest);
            write_rows(canvas.surface(), left + bit / word_rows, top + bit % word_rows * word_rows);
        }
    }
}

inline void TraceRaster::write_block(Surface& surface, int left, int top) {
    const std::span columns =
        std::span(sheet_).subspan(static_cast<std::size_t>(left), touched_columns);
    for (int row = top; row < top + word_rows; ++row) {
        using Pixels = std::array<Pixel, touched_columns>;
        Pixels colours = {};
        for (std::size_t index = 0; index < colours.size(); ++index) {
            const std::uint8_t seen = columns[index].seen[static_cast<std::size_t>(row)];
            colours[index] = palette_[seen].colour;
        }
        // By bits and on copies, for several pixels to be told apart at a time.
        Pixel* const place = &surface.at(left, row);
        Pixels pixels = {};
        std::memcpy(&pixels, place, sizeof pixels);
        for (std::size_t index = 0; index < colours.size(); ++index) {
            pixels[index] &= colours[index] == 0 ? ~Pixel{0} : Pixel{0};
            pixels[index] |= colours[index];
        }
        std::memcpy(place, &pixels, sizeof pixels);
    }
    for (Column& column : columns) {
        store<std::uint64_t>(column.seen.data() + top, 0);
    }
}

inline void TraceRaster::write_rows(Surface& surface, int column, int top) {
    std::uint8_t* seen = sheet_[static_cast<std::size_t>(column)].seen.data() + top;
    Pixel* pixel = &surface.at(column, top);
    const int pitch = surface.width();
    for (int row = 0; row < word_rows; ++row, pixel += pitch) {
        const Dye& dye = palette_[seen[row]];
        *pixel = (*pixel & dye.keep) | dye.colour;
    }
    store<std::uint64_t>(seen, 0);
}

} // namespace kv408
