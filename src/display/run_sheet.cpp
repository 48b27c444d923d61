#include "display/run_sheet.h"

namespace kv408 {
namespace {

constexpr std::size_t line_size = 64;

std::size_t lines_for(std::size_t bytes) {
    return (bytes + line_size - 1) / line_size;
}

} // namespace

constexpr std::array<RunSheet::Stroke, RunSheet::stroke_rows + 1> RunSheet::first_rows =
    first_rows_table();

RunSheet::RunSheet(int height)
    // Room for a stroke beyond the end of a run. An odd number of lines, for the columns not to
    // share the same few places of the cache.
    : pitch_((lines_for(static_cast<std::size_t>(height + stroke_rows)) | 1U) * line_size),
      group_pitch_(lines_for(static_cast<std::size_t>(height / stroke_rows + 1 + stroke_rows)) *
                   line_size),
      lines_(columns * pitch_ / line_size), group_lines_(columns * group_pitch_ / line_size) {}

} // namespace kv408
