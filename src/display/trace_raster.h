#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "display/canvas.h"
#include "display/tiles.h"
#include "display/trace_look.h"

namespace kv408 {

/// Draws two traces at a time, straight onto the picture, with the pixels that painting each of
/// them onto a surface of its own and copying it over with the background transparent gives.
///
/// It needs no line drawing, as a generation covers one run of rows in each column (Generation).
/// The generations' runs are painted from the oldest to the newest onto a sheet that has one byte
/// for each pixel, column after column, so that a run is a few whole words. A byte holds, in four
/// bits for each trace, which of its generations is seen there; 0 is none, also for one in the
/// background colour. Only the pixels whose byte is not 0 are then written to the picture; for
/// them to be found quickly, a bit for every eight rows of a column notes what was painted on.
class TraceRaster {
public:
    /// Rows that are best written at a time, so that the picture's part in hand stays in the cache.
    static constexpr int band_rows = Tiles::band_rows;

    /// Columns that are drawn at a time, from a multiple of it on: few enough for their sheet to
    /// stay in the cache from one picture's block to the next.
    static constexpr int block_columns = 128;

    /// Traces that are drawn at a time.
    static constexpr std::size_t most_traces = 2;

    /// Whether `view` can be drawn this way: each point of every generation that it shows lies one
    /// unit right of the point before; for dots, which natural size paints point by point, also
    /// every generation must begin in the same column.
    [[nodiscard]] static bool can_draw(const TraceView& view);

    /// For surfaces of `height` rows.
    explicit TraceRaster(int height);

    /// Paints `columns`, all of one block, of `views`, at most two, the one that lies on top last,
    /// onto the sheet.
    void paint(Columns columns, std::span<const TraceView> views, Pixel background);

    /// Writes the rows of the sheet from `top`, a multiple of band_rows, up to the next such
    /// multiple onto `canvas`, in the columns painted last, and clears them. What it may have
    /// changed is added to `tiles`.
    void write_band(const Canvas& canvas, int top, Tiles& tiles);

private:
    static constexpr int trace_bits = 4;
    static constexpr int strip_columns = 32; // few enough for their part of the sheet to stay near
    static constexpr int word_rows = 8;

    /// How the runs of one generation change the sheet's bytes.
    struct Ink {
        std::uint8_t number = 0; ///< bits of the trace to set
        std::uint8_t keep = 0;   ///< bits of the other trace
    };

    /// How a byte of the sheet changes a pixel of the picture: either member is 0.
    struct Dye {
        Pixel keep = ~Pixel{0}; ///< bits of the pixel that stay
        Pixel colour = 0;       ///< bits that come instead
    };

    /// One column's bytes for the rows of one band: a line of the cache.
    struct alignas(band_rows) Cell {
        std::array<std::uint8_t, band_rows> seen = {};
    };

    /// For eight columns of a band, which groups of eight rows were painted on: bit 8c + r for
    /// column c and the rows from 8r.
    using Touched = std::uint64_t;

    /// Where the bytes and bits of a column of the block lie, from the block's first.
    struct Finder {
        std::uint8_t* sheet = nullptr;
        std::size_t pitch = 0; ///< bytes from a column to the next
        Touched* touched = nullptr;
        int bands = 0; ///< numbers for each eight columns
    };

    void choose_palette(std::span<const TraceView> views, Pixel background);
    void paint_trace(Columns columns, const TraceView& view, Pixel background, int shift);
    void paint_lines(Columns columns, const Generation& generation, Ink ink);
    void paint_dots(Columns columns, const Generation& generation, Ink ink);
    [[nodiscard]] Finder finder();
    static void paint_run(const Finder& find, int column, RowRun run, Ink ink);
    [[nodiscard]] std::uint8_t* seen(int column, int top);
    [[nodiscard]] Touched& touched(int column, int band);
    void write_block(Surface& surface, int left, int top, int rows);
    void write_rows(Surface& surface, int column, int top, int rows);

    int height_;
    int bands_;
    std::size_t cells_;       ///< of a column
    std::vector<Cell> sheet_; ///< all 0 but for what is painted and not yet written
    std::vector<Touched> touched_;
    std::array<Dye, 1U << (2 * trace_bits)> palette_ = {}; ///< of each value of a byte
};

} // namespace kv408
