#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "display/surface.h"

namespace kv408 {

/// A picture kept as runs of pixels of one colour. A plot then takes a small part of what its
/// pixels would, and can wait until somebody wants it.
class PackedPicture {
public:
    /// A picture of `width` pixels and no rows yet.
    explicit PackedPicture(int width) : width_(width) {}

    /// Adds `row`, of `width()` pixels, under those that are there.
    void add(std::span<const Pixel> row);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return static_cast<int>(first_run_.size()); }

    /// The pixels of row `y`, 0 being the top one.
    [[nodiscard]] std::vector<Pixel> row(int y) const;

    /// All of it.
    [[nodiscard]] Surface surface() const;

private:
    /// How often in its highest byte, the colour without its opacity in the others.
    using Run = std::uint32_t;

    int width_;
    std::vector<Run> runs_;
    std::vector<std::size_t> first_run_; ///< of each row
};

} // namespace kv408
