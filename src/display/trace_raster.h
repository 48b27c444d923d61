#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "display/canvas.h"
#include "display/run_sheet.h"
#include "display/tiles.h"
#include "display/trace_look.h"

namespace kv408 {

/// What lies under traces.
struct Backdrop {
    const Surface& surface;       ///< of the size of the picture; it may be the picture's own
    const Tiles* drawn = nullptr; ///< what is not bare ground; nullptr: everything
    Pixel ground = 0;
};

/// Draws up to two traces at a time on a backdrop, with the pixels that painting each of them onto
/// a surface of its own and copying it over with the background transparent gives.
///
/// It needs no line drawing, as a generation covers one run of rows in each column (Generation).
/// The runs are painted onto a sheet with one number for each pixel (RunSheet), on which the higher
/// number is seen: the trace on top has higher ones, and of each trace the newer generation. Then
/// every pixel of the tiles that some run may have reached is written once, two columns at a time
/// through a table of the pixels that belong to two numbers.
class TraceRaster {
public:
    /// Rows that are best written at a time, so that the picture's part in hand stays in the cache.
    static constexpr int band_rows = Tiles::band_rows;

    /// Columns that are drawn at a time, from a multiple of it on.
    static constexpr int block_columns = RunSheet::columns;

    /// Traces that can be drawn at a time.
    static constexpr std::size_t most_traces = 2;

    /// Whether `view` can be drawn this way: each point of every generation that it shows lies one
    /// unit right of the point before; for dots, which natural size paints point by point, also
    /// every generation must begin in the same column.
    [[nodiscard]] static bool can_draw(const TraceView& view);

    /// How many of `views`, at most two, can be drawn at a time. What a generation in the colour of
    /// the background hides of its own trace's history must not hide the trace below: the traces
    /// are then drawn one by one.
    [[nodiscard]] static std::size_t drawn_at_a_time(std::span<const TraceView> views,
                                                     Pixel background);

    /// For surfaces of `height` rows.
    explicit TraceRaster(int height);

    /// Paints `columns`, all of one block, of `views`, no more than can be drawn at a time, the one
    /// that lies on top last, onto the sheet.
    void paint(Columns columns, std::span<const TraceView> views, Pixel background);

    /// Takes the tiles out of `tiles` that lie in the band from row `top`, a multiple of band_rows,
    /// and that write_band will write in `columns`, those painted last.
    void take_covered_out(Tiles& tiles, Columns columns, int top) const;

    /// Writes the tiles of the band from row `top` that the sheet has something of, on `backdrop`,
    /// onto `canvas`, which has the columns painted last, clears the sheet there and adds the tiles
    /// to `tiles`.
    void write_band(const Canvas& canvas, int top, const Backdrop& backdrop, Tiles& tiles);

private:
    static constexpr int strip_columns = 32; // few enough for their part of the sheet to stay near
    static constexpr int stacks = block_columns / Tiles::side;
    static constexpr int number_bits = 5;
    static constexpr std::size_t numbers = std::size_t{1} << number_bits;
    static constexpr std::size_t twos = numbers * numbers;
    static constexpr std::size_t pairs = Tiles::side / 2;

    /// The pixels of two neighbouring columns.
    using Pair = std::uint64_t;

    /// What two numbers of the sheet have to do with two pixels; a table for each, as the processor
    /// finds a place in it without computing.
    struct Dyes {
        std::array<Pair, twos> keep = {};   ///< bits of the backdrop that are seen
        std::array<Pair, twos> colour = {}; ///< bits that come instead
    };

    /// For each pair of columns of a stack, the places of the dyes of rows taken at a time.
    using Places = std::array<RunSheet::TwoPieces, pairs>;

    /// The backdrop's pixels from a tile's corner on.
    struct Under {
        const Pixel* corner = nullptr;
        int pitch = 0; ///< pixels from a row to the next
    };

    void choose_palette(std::span<const TraceView> views, Pixel background);
    void paint_trace(Columns columns, const TraceView& view, Pixel background, std::size_t place);
    void paint_lines(Columns columns, const Generation& generation, std::uint8_t number,
                     std::size_t place);
    void paint_dots(Columns columns, const Generation& generation, std::uint8_t number,
                    std::size_t place);
    void note_covered();
    void write_piece(const Canvas& canvas, Point corner, unsigned tiles, const Backdrop& backdrop);
    void write_tile(Surface& surface, Point corner, int first, const Under& under) const;
    void write_part(const Canvas& canvas, Point corner, int first, const Under& under) const;

    int height_;
    RunSheet sheet_;
    /// Of each trace, the rows between which it was painted on in each eight columns of the block.
    std::array<std::array<RowRun, stacks>, most_traces> painted_ = {};
    Tiles covered_; ///< of the block, those that were painted on, and maybe more
    std::array<Pixel, numbers> palette_ = {}; ///< of each number; 0: the backdrop is seen
    std::vector<Dyes> dyes_;                  ///< of two numbers, the left one in the lower bits
    Places places_ = {};                      ///< what was taken last
};

} // namespace kv408
