#include "display/packed_picture.h"

#include <algorithm>

namespace kv408 {
namespace {

constexpr std::uint32_t colour_bits = 0x00FFFFFFU;
constexpr std::uint32_t opaque = 0xFF000000U;
constexpr unsigned count_shift = 24;
constexpr std::size_t longest_run = 255;

} // namespace

void PackedPicture::add(std::span<const Pixel> row) {
    first_run_.push_back(runs_.size());
    for (std::size_t x = 0; x < row.size();) {
        std::size_t end = x + 1;
        while (end < row.size() && end - x < longest_run && row[end] == row[x]) {
            ++end;
        }
        runs_.push_back(static_cast<std::uint32_t>(end - x) << count_shift |
                        (row[x] & colour_bits));
        x = end;
    }
}

std::vector<Pixel> PackedPicture::row(int y) const {
    std::vector<Pixel> pixels;
    pixels.reserve(static_cast<std::size_t>(width_));
    for (std::size_t run = first_run_.at(static_cast<std::size_t>(y));
         pixels.size() < static_cast<std::size_t>(width_); ++run) {
        pixels.insert(pixels.end(), runs_[run] >> count_shift, (runs_[run] & colour_bits) | opaque);
    }
    return pixels;
}

Surface PackedPicture::surface() const {
    Surface all(width(), height());
    for (int y = 0; y < height(); ++y) {
        const std::vector<Pixel> pixels = row(y);
        std::copy(pixels.begin(), pixels.end(), all.row(y).begin());
    }
    return all;
}

} // namespace kv408
