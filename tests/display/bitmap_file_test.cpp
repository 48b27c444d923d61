#include "display/bitmap_file.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kv408::test {
namespace {

std::vector<int> bytes_of(const std::string& text) {
    std::vector<int> bytes;
    for (const char byte : text) {
        bytes.push_back(static_cast<unsigned char>(byte));
    }
    return bytes;
}

// Three pixels per row are nine bytes and three of padding; 54 + 2 * 12 = 78 bytes in all.
TEST(BitmapFile, OfThreeByTwoPixels) {
    Surface picture(3, 2);
    picture.at(0, 0) = pixel_of(rgb(255, 0, 0));
    picture.at(1, 0) = pixel_of(rgb(0, 255, 0));
    picture.at(2, 0) = pixel_of(rgb(0, 0, 255));
    picture.at(0, 1) = pixel_of(rgb(1, 2, 3));
    picture.at(1, 1) = pixel_of(rgb(4, 5, 6));
    picture.at(2, 1) = pixel_of(rgb(7, 8, 9));
    const std::vector<int> expected = {
        'B', 'M', 78,  0, 0,   0, 0,   0, 0, 0, 54, 0, 0, 0, // file header
        40,  0,   0,   0, 3,   0, 0,   0, 2, 0, 0,  0,       // size of this header, width, height
        1,   0,   24,  0, 0,   0, 0,   0,               // planes, bits per pixel, no compression
        24,  0,   0,   0, 0,   0, 0,   0, 0, 0, 0,  0,  // bytes of the pixels, pixels per metre
        0,   0,   0,   0, 0,   0, 0,   0,               // no palette
        3,   2,   1,   6, 5,   4, 9,   8, 7, 0, 0,  0,  // the bottom row, blue first
        0,   0,   255, 0, 255, 0, 255, 0, 0, 0, 0,  0}; // the top row
    EXPECT_EQ(bytes_of(bitmap_file(picture)), expected);
}

TEST(BitmapFile, RowsOfFourPixelsNeedNoPadding) {
    Surface picture(4, 1);
    picture.at(3, 0) = pixel_of(rgb(10, 20, 30));
    const std::string file = bitmap_file(picture);
    ASSERT_EQ(file.size(), 54U + 12U);
    EXPECT_EQ(bytes_of(file.substr(54)), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 30, 20, 10}));
}

TEST(BitmapFile, RowsOfOneAndTwoPixelsArePadded) {
    // 3 bytes and 1 of padding; 6 and 2.
    EXPECT_EQ(bitmap_file(Surface(1, 5)).size(), 54U + 5U * 4U);
    EXPECT_EQ(bitmap_file(Surface(2, 5)).size(), 54U + 5U * 8U);
}

// 705 pixels per row are 2115 bytes and one of padding: 2116 = 0x844. 54 + 540 * 2116 = 1142694, or
// 0x116FA6 in hexadecimal; the pixels' 1142640 are 0x116F70.
TEST(BitmapFile, OfThePlotBoxBearsItsSizes) {
    const std::string file = bitmap_file(Surface(705, 540));
    ASSERT_EQ(file.size(), 1142694U);
    EXPECT_EQ(bytes_of(file.substr(2, 4)), (std::vector<int>{0xA6, 0x6F, 0x11, 0}));
    EXPECT_EQ(bytes_of(file.substr(18, 8)), (std::vector<int>{0xC1, 2, 0, 0, 0x1C, 2, 0, 0}));
    EXPECT_EQ(bytes_of(file.substr(34, 4)), (std::vector<int>{0x70, 0x6F, 0x11, 0}));
}

} // namespace
} // namespace kv408::test
