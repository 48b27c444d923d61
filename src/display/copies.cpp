#include "display/copies.h"

#include <limits>

namespace kv408 {
namespace {

std::int32_t narrow(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

/// Calls `copy(from, to)` with the pixels of each row that lie on both sides.
template <typename Copy>
void for_each_row(const Canvas& canvas, Point place, const Surface& source, Rectangle area,
                  const Copy& copy) {
    const std::int64_t right_by = std::int64_t{place.x} - area.left;
    const std::int64_t down_by = std::int64_t{place.y} - area.top;
    const Rectangle part{std::max(area.left, 0), std::max(area.top, 0),
                         std::min(area.right, source.width()),
                         std::min(area.bottom, source.height())};
    const Rectangle target =
        canvas.clipped({narrow(part.left + right_by), narrow(part.top + down_by),
                        narrow(part.right + right_by), narrow(part.bottom + down_by)});
    if (target.left >= target.right) {
        return;
    }
    const auto length = static_cast<std::size_t>(target.right - target.left);
    for (int y = target.top; y < target.bottom; ++y) {
        copy(source.row(static_cast<int>(y - down_by))
                 .subspan(static_cast<std::size_t>(target.left - right_by), length),
             canvas.surface().row(y).subspan(static_cast<std::size_t>(target.left), length));
    }
}

} // namespace

void copy_block(const Canvas& canvas, Point place, const Surface& source, Rectangle area) {
    const bool same_rows = source.width() == canvas.surface().width();
    if (place == Point{} && area == whole(source) && area == whole(canvas.surface()) && same_rows &&
        canvas.columns() == Columns{0, source.width()}) {
        std::copy(source.pixels().begin(), source.pixels().end(),
                  canvas.surface().pixels().begin());
        return;
    }
    for_each_row(canvas, place, source, area, [](std::span<const Pixel> from, std::span<Pixel> to) {
        std::copy(from.begin(), from.end(), to.begin());
    });
}

void copy_transparent(const Canvas& canvas, Point place, const Surface& source, Rectangle area,
                      Pixel key) {
    for_each_row(canvas, place, source, area,
                 [key](std::span<const Pixel> from, std::span<Pixel> to) {
                     for (std::size_t index = 0; index < from.size(); ++index) {
                         to[index] = from[index] == key ? to[index] : from[index];
                     }
                 });
}

} // namespace kv408
