#include "server/stb_picture_coder.h"

#include <algorithm>

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

void append_bytes(void* bytes, void* data, int size) {
    static_cast<std::string*>(bytes)->append(static_cast<const char*>(data),
                                             static_cast<std::size_t>(size));
}

} // namespace

std::string StbPictureCoder::png(const Surface& picture) {
    std::string pixels;
    pixels.reserve(picture.pixels().size() * components);
    for (const Pixel pixel : picture.pixels()) {
        for (const unsigned shift : {16U, 8U, 0U}) {
            pixels += static_cast<char>(static_cast<unsigned char>(pixel >> shift));
        }
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
