#include "server/stb_picture_coder.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

// The library is this header: all of it belongs to this file.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace kv408 {
namespace {

constexpr int components = 3;

void add_colour(std::string& bytes, Pixel pixel) {
    for (const unsigned shift : {16U, 8U, 0U}) {
        bytes += static_cast<char>(static_cast<unsigned char>(pixel >> shift));
    }
}

void add_number(std::string& bytes, std::uint32_t value) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    }
}

/// A picture of few colours: each pixel is the place of its colour in the table.
struct FewColours {
    std::vector<Pixel> table;
    std::vector<unsigned char> rows; ///< each begins with a 0: no PNG filter
};

/// None where there are more colours than a byte can name.
std::optional<FewColours> few_colours(const Surface& picture) {
    constexpr std::size_t most = 256;
    FewColours few;
    few.rows.reserve(picture.pixels().size() + static_cast<std::size_t>(picture.height()));
    std::unordered_map<Pixel, unsigned char> places;
    auto last = places.emplace(picture.at(0, 0), 0).first;
    few.table.push_back(last->first);
    for (int y = 0; y < picture.height(); ++y) {
        few.rows.push_back(0);
        for (const Pixel pixel : picture.row(y)) {
            if (pixel != last->first) {
                last = places.emplace(pixel, static_cast<unsigned char>(places.size())).first;
                if (places.size() > most) {
                    return std::nullopt;
                }
                if (places.size() > few.table.size()) {
                    few.table.push_back(pixel);
                }
            }
            few.rows.push_back(last->second);
        }
    }
    return few;
}

void add_chunk(std::string& file, const std::string& kind, std::string_view data) {
    add_number(file, static_cast<std::uint32_t>(data.size()));
    std::string checked = kind;
    checked += data;
    file += checked;
    add_number(file, stbiw__crc32(reinterpret_cast<unsigned char*>(checked.data()),
                                  static_cast<int>(checked.size())));
}

/// A PNG with a table of colours, which the library's own writer does not know; it takes a third of
/// the memory and time. Empty when it could not be compressed.
std::string file_of(FewColours few, const Surface& picture) {
    constexpr int quality = 8;
    int size = 0;
    const std::unique_ptr<unsigned char, decltype(&std::free)> data(
        stbi_zlib_compress(few.rows.data(), static_cast<int>(few.rows.size()), &size, quality),
        std::free);
    if (!data) {
        return {};
    }
    std::string header;
    add_number(header, static_cast<std::uint32_t>(picture.width()));
    add_number(header, static_cast<std::uint32_t>(picture.height()));
    header += std::string_view("\x08\x03\0\0\0", 5); // 8 bits per pixel, by the table
    std::string table;
    for (const Pixel pixel : few.table) {
        add_colour(table, pixel);
    }
    std::string file = "\x89PNG\r\n\x1a\n";
    add_chunk(file, "IHDR", header);
    add_chunk(file, "PLTE", table);
    add_chunk(file, "IDAT",
              {reinterpret_cast<const char*>(data.get()), static_cast<std::size_t>(size)});
    add_chunk(file, "IEND", {});
    return file;
}

void append_bytes(void* bytes, void* data, int size) {
    static_cast<std::string*>(bytes)->append(static_cast<const char*>(data),
                                             static_cast<std::size_t>(size));
}

} // namespace

std::string StbPictureCoder::png(const Surface& picture) {
    if (auto few = few_colours(picture)) {
        return file_of(std::move(*few), picture);
    }
    std::string pixels;
    pixels.reserve(picture.pixels().size() * components);
    for (const Pixel pixel : picture.pixels()) {
        add_colour(pixels, pixel);
    }
    std::string bytes;
    const int done =
        stbi_write_png_to_func(append_bytes, &bytes, picture.width(), picture.height(), components,
                               pixels.data(), components * picture.width());
    return done != 0 ? bytes : std::string();
}

Surface StbPictureCoder::with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                                    Colour background) {
    constexpr int line_height = 20;
    Surface higher(picture.width(),
                   picture.height() + line_height * static_cast<int>(lines.size()));
    std::fill(higher.pixels().begin(), higher.pixels().end(), pixel_of(background));
    std::copy(picture.pixels().begin(), picture.pixels().end(), higher.pixels().begin());
    return higher;
}

} // namespace kv408
