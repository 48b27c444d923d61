#pragma once

#include "display/surface.h"

namespace kv408 {

/// Where a drawing operation may change pixels: a surface, all of it or a range of its columns.
/// Whatever an operation would draw outside is left out without disturbing what it draws inside.
class Canvas {
public:
    /// The whole of `surface`, which must outlive the canvas.
    explicit Canvas(Surface& surface) : Canvas(surface, Columns{0, surface.width()}) {}

    /// The part of `columns` that lies on `surface`, which must outlive the canvas.
    Canvas(Surface& surface, Columns columns)
        : surface_(&surface), columns_(common(columns, Columns{0, surface.width()})) {}

    [[nodiscard]] Surface& surface() const { return *surface_; }

    /// The columns that may change.
    [[nodiscard]] Columns columns() const { return columns_; }

    /// The rows that may change are 0 up to, not including, this.
    [[nodiscard]] int height() const { return surface_->height(); }

    /// True when the pixel at (`x`, `y`) may change.
    [[nodiscard]] bool contains(std::int64_t x, std::int64_t y) const {
        return x >= columns_.left && x < columns_.right && y >= 0 && y < height();
    }

    /// The part of `area` that may change; empty (right not above left, or bottom not above top)
    /// when there is none.
    [[nodiscard]] Rectangle clipped(Rectangle area) const {
        return {std::max(area.left, columns_.left), std::max(area.top, 0),
                std::min(area.right, columns_.right), std::min(area.bottom, height())};
    }

private:
    Surface* surface_;
    Columns columns_;
};

} // namespace kv408
