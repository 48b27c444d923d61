#include "acquisition/sample_conversion.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

struct WordRow {
    Byte high;
    Byte low;
    int block;
    int point;
};

TEST(SampleWord, HoldsTheHighByteToItsLimit) {
    const WordRow rows[] = {
        {0, 0, 0, 0},          {0, 255, 255, 255},     {8, 0, 2048, 2048},
        {15, 255, 4095, 4095}, {16, 10, 4106, 4106},   {17, 10, 4362, 4106}, // 17 * 256 + 10
        {26, 10, 6666, 4106},  {32, 255, 8447, 4351},                        // 32 * 256 + 255
        {33, 0, 8192, 4096},   {255, 255, 8447, 4351},
    };
    for (const WordRow& row : rows) {
        EXPECT_EQ(sample_word(row.high, row.low, block_high_byte_limit), row.block);
        EXPECT_EQ(sample_word(row.high, row.low, point_high_byte_limit), row.point);
    }
    EXPECT_EQ(block_waiting_word, 0x1A0A);
    EXPECT_EQ(point_waiting_word, 16 * 256 + 10);
}

struct ConversionRow {
    std::int16_t word;
    std::int16_t swoffset;
    bool inverted;
    std::int16_t gain;
    double vtfactor;
    int code;
    double millivolts;
};

TEST(ConvertedSample, IsCorrectedInvertedAndScaled) {
    const ConversionRow rows[] = {
        {2048, 0, false, 2, 1.0, 2048, 0.0},
        {2048, 0, true, 2, 1.0, 2048, 0.0},
        {2448, 0, false, 2, 1.0, 2448, 200.0},
        {2448, 0, true, 2, 1.0, 1648, -200.0},
        {2448, 0, false, 2, 2.0, 2448, 400.0},
        {2648, 0, false, 1, 1.0, 2648, 100.0},
        {2648, 0, true, 1, 2.0, 1448, -200.0},
        {2000, 48, false, 2, 1.0, 2048, 0.0},
        {2100, -52, true, 1, 1.0, 2048, 0.0},
        {2000, 48, true, 2, 1.0, 2048, 0.0},
        {0, 0, false, 2, 1.0, 0, -1024.0},
        {4095, 0, false, 2, 1.0, 4095, 1023.5},
        {0, 0, true, 2, 1.0, 4096, 1024.0},
        // Out of the unsigned range a code stops at its end.
        {0, -1, false, 2, 1.0, 0, -1024.0},
        {8447, 0, true, 2, 1.0, 0, -1024.0},
        {8447, 32767, false, 2, 1.0, 41214, 19583.0},
        {0, -32768, true, 2, 1.0, 36864, 17408.0},
    };
    for (const ConversionRow& row : rows) {
        const Sample sample = converted({.inverted = row.inverted,
                                         .atten = row.gain == 2 ? 1.0 / 2.0 : 1.0 / 6.0,
                                         .vtfactor = row.vtfactor,
                                         .swoffset = row.swoffset},
                                        row.word);
        EXPECT_EQ(sample.code, row.code) << row.word << " " << row.swoffset;
        EXPECT_NEAR(sample.mv, row.millivolts, 1e-9) << row.word << " " << row.swoffset;
    }
}

TEST(StoreSample, WritesItsOwnPointOnly) {
    SampleBuffer samples;
    samples.raw.fill(7);
    samples.mv.fill(7.0);
    store_sample(samples, 0, {2060, 2.0});
    store_sample(samples, 650, {2066, 3.0});
    EXPECT_EQ(samples.raw[0], 2060);
    EXPECT_EQ(samples.mv[0], 2.0);
    EXPECT_EQ(samples.raw[650], 2066);
    EXPECT_EQ(samples.mv[650], 3.0);
    for (std::size_t index = 1; index < 650; ++index) {
        EXPECT_EQ(samples.raw[index], 7);
        EXPECT_EQ(samples.mv[index], 7.0);
    }
    EXPECT_EQ(samples.raw[651], 7);
}

} // namespace
} // namespace kv408
