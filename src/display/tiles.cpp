#include "display/tiles.h"

namespace kv408 {
namespace {

constexpr int tiles_of_band = Tiles::band_rows / Tiles::side;

int how_many(int pixels, int of_each) {
    return (pixels + of_each - 1) / of_each;
}

/// The tiles of a stack from number `first` up to, not including, `end`.
Tiles::Stack between(int first, int end) {
    return static_cast<Tiles::Stack>((1U << end) - (1U << first));
}

} // namespace

Tiles::Tiles(int width, int height)
    : width_(width), height_(height), wide_(how_many(width, side)),
      bands_(how_many(height, band_rows)),
      stacks_(static_cast<std::size_t>(wide_) * static_cast<std::size_t>(bands_)) {}

Columns Tiles::stacks_of(Columns columns) const {
    return common({columns.left / side, how_many(columns.right, side)}, {0, wide_});
}

void Tiles::add_all() {
    std::fill(stacks_.begin(), stacks_.end(), between(0, tiles_of_band));
}

void Tiles::clear() {
    std::fill(stacks_.begin(), stacks_.end(), Stack{0});
}

void Tiles::add(Rectangle area) {
    const Columns stacks = stacks_of({std::max(area.left, 0), area.right});
    const int top = std::max(area.top, 0) / side;
    const int end = how_many(std::min(area.bottom, height_), side);
    for (int first = top; first < end; first = (first / tiles_of_band + 1) * tiles_of_band) {
        const int band = first / tiles_of_band;
        const int start = band * tiles_of_band;
        const Stack added = between(first - start, std::min(end - start, tiles_of_band));
        for (int stack = stacks.left; stack < stacks.right; ++stack) {
            at(stack, band) |= added;
        }
    }
}

void Tiles::add(const Tiles& others, Columns columns) {
    const Columns stacks = stacks_of(columns);
    for (int band = 0; band < bands_; ++band) {
        for (int stack = stacks.left; stack < stacks.right; ++stack) {
            at(stack, band) |= others.at(stack, band);
        }
    }
}

void Tiles::remove(Columns columns, int top) {
    const int end = columns.right >= width_ ? wide_ : columns.right / side;
    for (int stack = how_many(columns.left, side); stack < end; ++stack) {
        at(stack, top / band_rows) = 0;
    }
}

std::vector<Rectangle> Tiles::rectangles() const {
    constexpr int rows = 4;    // of tiles that are looked at together
    constexpr int nearest = 4; // tiles left out between two rectangles, at the least
    std::vector<Rectangle> result;
    for (int first = 0; first * side < height_; first += rows) {
        const auto wanted = between(first % tiles_of_band, first % tiles_of_band + rows);
        const int top = first * side;
        const int bottom = std::min(top + rows * side, height_);
        const std::size_t found_before = result.size();
        for (int stack = 0; stack < wide_; ++stack) {
            if ((at(stack, first / tiles_of_band) & wanted) == 0) {
                continue;
            }
            const int left = stack * side;
            const int right = std::min(left + side, width_);
            if (result.size() > found_before && left - result.back().right < nearest * side) {
                result.back().right = right;
            } else {
                result.push_back({left, top, right, bottom});
            }
        }
    }
    return result;
}

} // namespace kv408
