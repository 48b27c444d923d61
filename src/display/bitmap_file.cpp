#include "display/bitmap_file.h"

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

void put_headers(std::string& bytes, const Surface& picture, std::uint32_t pixels_bytes) {
    constexpr std::uint32_t planes = 1;
    constexpr std::uint32_t bits_a_pixel = 24;
    bytes += "BM";
    put(bytes, headers_bytes + pixels_bytes, 4);
    put(bytes, 0, 4); // reserved
    put(bytes, headers_bytes, 4);
    put(bytes, picture_header_bytes, 4);
    put(bytes, static_cast<std::uint32_t>(picture.width()), 4);
    put(bytes, static_cast<std::uint32_t>(picture.height()), 4);
    put(bytes, planes, 2);
    put(bytes, bits_a_pixel, 2);
    put(bytes, 0, 4); // not compressed
    put(bytes, pixels_bytes, 4);
    put(bytes, 0, 4); // pixels per metre, across and down: not known
    put(bytes, 0, 4);
    put(bytes, 0, 4); // no palette
    put(bytes, 0, 4);
}

} // namespace

std::string bitmap_file(const Surface& picture) {
    const std::uint32_t used_bytes = pixel_bytes * static_cast<std::uint32_t>(picture.width());
    const std::uint32_t padding = (row_alignment - used_bytes % row_alignment) % row_alignment;
    const std::uint32_t pixels_bytes =
        (used_bytes + padding) * static_cast<std::uint32_t>(picture.height());
    std::string bytes;
    bytes.reserve(headers_bytes + pixels_bytes);
    put_headers(bytes, picture, pixels_bytes);
    for (int y = picture.height() - 1; y >= 0; --y) {
        for (const Pixel pixel : picture.row(y)) {
            // A pixel's lowest byte is its blue component, the first of the three in the file.
            put(bytes, pixel, static_cast<int>(pixel_bytes));
        }
        bytes.append(padding, '\0');
    }
    return bytes;
}

} // namespace kv408
