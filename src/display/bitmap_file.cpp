#include "display/bitmap_file.h"

#include <utility>

namespace kv408 {
namespace {

constexpr std::uint32_t file_header_bytes = 14;
constexpr std::uint32_t picture_header_bytes = 40;
constexpr std::uint32_t headers_bytes = file_header_bytes + picture_header_bytes;
constexpr std::uint32_t pixel_bytes = 3;
constexpr std::uint32_t row_alignment = 4;

/// Appends the low `count` bytes of `value`, the lowest first.
void put(std::string& bytes, std::uint32_t value, int count) {
    constexpr unsigned byte_bits = 8;
    for (int index = 0; index < count; ++index) {
        bytes.push_back(static_cast<char>(value & 0xFFU));
        value >>= byte_bits;
    }
}

/// What a file of `width` by `height` pixels consists of.
struct Layout {
    Layout(int pixels_across, int pixels_down)
        : width(static_cast<std::uint32_t>(pixels_across)),
          height(static_cast<std::uint32_t>(pixels_down)) {}
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t padding = (row_alignment - pixel_bytes * width % row_alignment) % row_alignment;
    std::uint32_t row_bytes = pixel_bytes * width + padding;
    std::uint32_t pixels_bytes = row_bytes * height;
};

void put_headers(std::string& bytes, const Layout& layout) {
    constexpr std::uint32_t planes = 1;
    constexpr std::uint32_t bits_per_pixel = 24;
    bytes += "BM";
    put(bytes, headers_bytes + layout.pixels_bytes, 4);
    put(bytes, 0, 4); // reserved
    put(bytes, headers_bytes, 4);
    put(bytes, picture_header_bytes, 4);
    put(bytes, layout.width, 4);
    put(bytes, layout.height, 4);
    put(bytes, planes, 2);
    put(bytes, bits_per_pixel, 2);
    put(bytes, 0, 4); // not compressed
    put(bytes, layout.pixels_bytes, 4);
    put(bytes, 0, 4); // pixels per metre, across and down: not known
    put(bytes, 0, 4);
    put(bytes, 0, 4); // no palette
    put(bytes, 0, 4);
}

void put_row(std::string& bytes, std::span<const Pixel> row, const Layout& layout) {
    for (const Pixel pixel : row) {
        // A pixel's lowest byte is its blue component, the first of the three in the file.
        put(bytes, pixel, static_cast<int>(pixel_bytes));
    }
    bytes.append(layout.padding, '\0');
}

} // namespace

std::string bitmap_file(const Surface& picture) {
    const Layout layout(picture.width(), picture.height());
    std::string bytes;
    bytes.reserve(headers_bytes + layout.pixels_bytes);
    put_headers(bytes, layout);
    for (int y = picture.height() - 1; y >= 0; --y) {
        put_row(bytes, picture.row(y), layout);
    }
    return bytes;
}

BitmapParts::BitmapParts(PackedPicture picture)
    : picture_(std::move(picture)), rows_left_(picture_.height()) {}

std::size_t BitmapParts::size() const {
    return headers_bytes + Layout(picture_.width(), picture_.height()).pixels_bytes;
}

std::string BitmapParts::next() {
    constexpr std::size_t part = std::size_t{64} * 1024;
    const Layout layout(picture_.width(), picture_.height());
    std::string bytes;
    if (!std::exchange(begun_, true)) {
        put_headers(bytes, layout);
    }
    bytes.reserve(part + layout.row_bytes);
    while (bytes.size() < part && rows_left_ > 0) {
        put_row(bytes, picture_.row(--rows_left_), layout);
    }
    return bytes;
}

} // namespace kv408
