#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "display/plot_scale.h"

namespace kv408 {

/// A sheet of one number for each pixel of some columns, onto which runs of rows are painted: where
/// several lie, the highest number is seen; 0 is none.
///
/// How long a run is cannot be foreseen, and leaving a loop at an unforeseeable point takes the
/// processor longer than painting a run. So a long run is painted in three strokes: its first rows,
/// its last ones, and, on a second sheet with one number for as many rows, what lies between.
class RunSheet {
public:
    /// Columns of a sheet: few enough for it to stay in the cache from one picture's block to the
    /// next.
    static constexpr int columns = 128;

    /// Rows of a column that are taken off at a time.
    static constexpr int piece_rows = 32;
    using TwoPieces = std::array<std::uint16_t, piece_rows>; ///< of two columns

    /// An empty sheet for surfaces of `height` rows.
    explicit RunSheet(int height);

    /// Paints `run`, which is not empty and lies on the surface, in column `column`, 0..127, with
    /// `number`.
    void paint(int column, RowRun run, std::uint8_t number) {
        std::uint8_t* const at = numbers(column) + run.top;
        const int rows = run.end - run.top;
        if (rows <= stroke_rows) {
            paint_first(at, rows, number);
            return;
        }
        paint_stroke(at, number);
        paint_stroke(at + rows - stroke_rows, number);
        const int first = (run.top + stroke_rows - 1) / stroke_rows;
        const int end = run.end / stroke_rows;
        std::uint8_t* group = groups(column) + first;
        int left = std::max(end - first, 0);
        for (; left > stroke_rows; left -= stroke_rows, group += stroke_rows) {
            paint_stroke(group, number);
        }
        paint_first(group, left, number);
    }

    /// Takes the numbers seen in rows `top`, a multiple of 32, to `top` + 31 of columns `column`
    /// and the next off the sheet; of each row, the second's are `shift` bits higher.
    void take_two(int column, int top, int shift, TwoPieces& taken) {
        const std::uint8_t first_over = take_group(column, top);
        const std::uint8_t second_over = take_group(column + 1, top);
        std::uint8_t* const first = numbers(column) + top;
        std::uint8_t* const second = numbers(column + 1) + top;
        for (std::size_t row = 0; row < taken.size(); ++row) {
            const std::uint8_t one = first[row] > first_over ? first[row] : first_over;
            const std::uint8_t other = second[row] > second_over ? second[row] : second_over;
            taken[row] = static_cast<std::uint16_t>(one | other << shift);
        }
        std::memset(first, 0, piece_rows);
        std::memset(second, 0, piece_rows);
    }

private:
    static constexpr int stroke_rows = piece_rows; // few runs of a signal are longer
    using Stroke = std::array<std::uint8_t, stroke_rows>;

    /// A line of the cache.
    struct alignas(64) Line {
        std::array<std::uint8_t, 64> numbers = {};
    };

    /// For 0..32 rows, the stroke that has all bits in the first so many and none in the others.
    static constexpr std::array<Stroke, stroke_rows + 1> first_rows_table() {
        std::array<Stroke, stroke_rows + 1> table = {};
        for (std::size_t count = 0; count < table.size(); ++count) {
            std::fill_n(table[count].begin(), count, std::uint8_t{0xFF});
        }
        return table;
    }
    static const std::array<Stroke, stroke_rows + 1> first_rows;

    /// Paints 32 rows from `at` on.
    static void paint_stroke(std::uint8_t* at, std::uint8_t number) {
        for (int row = 0; row < stroke_rows; ++row) {
            at[row] = std::max(at[row], number);
        }
    }

    /// Paints `rows`, at most 32, from `at` on.
    static void paint_first(std::uint8_t* at, int rows, std::uint8_t number) {
        const Stroke& selected = first_rows[static_cast<std::size_t>(rows)];
        // On a copy: for all that the compiler knows, painting might change what is selected.
        Stroke bytes = {};
        std::memcpy(bytes.data(), at, sizeof bytes);
        for (std::size_t row = 0; row < bytes.size(); ++row) {
            bytes[row] = std::max(bytes[row], static_cast<std::uint8_t>(selected[row] & number));
        }
        std::memcpy(at, bytes.data(), sizeof bytes);
    }

    /// Takes off what was painted over all of the 32 rows from `top` on.
    std::uint8_t take_group(int column, int top) {
        std::uint8_t& group = groups(column)[top / stroke_rows];
        const std::uint8_t over = group;
        group = 0;
        return over;
    }

    [[nodiscard]] std::uint8_t* numbers(int column) {
        return lines_.front().numbers.data() + static_cast<std::size_t>(column) * pitch_;
    }
    [[nodiscard]] std::uint8_t* groups(int column) {
        return group_lines_.front().numbers.data() +
               static_cast<std::size_t>(column) * group_pitch_;
    }

    std::size_t pitch_; ///< bytes from a column to the next
    std::size_t group_pitch_;
    std::vector<Line> lines_; ///< all 0 but for what is painted and not yet taken
    std::vector<Line> group_lines_;
};

} // namespace kv408
