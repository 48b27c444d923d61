#include "acquisition/point_delay.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

struct DelayRow {
    int index;
    double tbresolution;
    std::int32_t coarse;
    std::int32_t second;
    int fine;
    const char* why;
};

// The delay d is index * tbresolution + 2500, the divider m = (d + 10500) / 10500 made odd.
constexpr DelayRow delay_rows[] = {
    {1, 0.0, 2500, 1, 240, "the start delay alone"},
    {1, 1.0, 2501, 1, 240, "2501"},
    {1, 7812.0, 10312, 1, 240, "first point at 500ns/div"},
    {1, 8000.0, 10500, 1, 240, "the longest undivided delay"},
    {1, 8001.0, 3500, 1, 239, "10501: m 2 -> 3, c 3500.33"},
    {1, 8000.5, 10500, 1, 240, "10500.5 is rounded to the even 10500"},
    {1, 8001.5, 3501, 1, 239, "10501.5 is rounded to the even 10502: c 3500.67"},
    {2, 7812.0, 6041, 1, 239, "18124: m 2.73 -> 3, c 6041.33"},
    {1, 13250.0, 5250, 1, 239, "15750: m 2.5 -> 2 -> 3"},
    {1, 23749.0, 8750, 1, 239, "26249: m 3.4999 -> 3, c 8749.67"},
    {1, 23750.0, 5250, 1, 238, "26250: m 3.5 -> 4 -> 5"},
    {1, 34250.0, 7350, 1, 238, "36750: m 4.5 -> 4 -> 5"},
    {3, 15625.0, 7054, 1, 237, "49375: m 5.702 -> 6 -> 7, c 7053.57"},
    // 481 is the last divider without the second value: d = 480 * 10500, c 10478.17.
    {1, 5037500.0, 10478, 1, 0, "5040000: m 481"},
    // d = 481 * 10500 gives 482, made odd 483: s = 483 / 16 - 16 = 14.19, f = 240 - 241 = -1.
    {1, 5048000.0, 10457, 14, 255, "5050500: m 482 -> 483"},
    {1, 5058500.0, 10478, 14, 255, "5061000: m 483, c 10478.26"},
    // m = 95239.33, c 10499.93, s 5936.44, f = 240 - 47619 mod 256 = 240 - 3.
    {640, 1562500.0, 10500, 5936, 237, "the largest delay, 1000002500"},
};

TEST(PointDelay, IsDividedByAnOddDividerBeyond10500Picoseconds) {
    for (const DelayRow& row : delay_rows) {
        const PointDelay delay = point_delay(row.index, row.tbresolution);
        EXPECT_EQ(delay.coarse, row.coarse) << row.why;
        EXPECT_EQ(delay.second, row.second) << row.why;
        EXPECT_EQ(delay.fine, row.fine) << row.why;
    }
}

struct FineRow {
    int half; ///< (m - 1) / 2
    int fine;
};

TEST(PointDelay, TheFineByteGoesRoundAt256) {
    const FineRow fines[] = {
        {1, 239},   {239, 1},   {240, 0},   {241, 255}, {250, 246},
        {255, 241}, {256, 240}, {257, 239}, {496, 0},
    };
    for (const FineRow& row : fines) {
        // A delay in the middle of what the divider 2 * half + 1 is for: (m - 1) * 10500.
        const double resolution = 2.0 * row.half * 10500.0 - 2500.0;
        EXPECT_EQ(point_delay(1, resolution).fine, row.fine) << row.half;
    }
}

TEST(PointDelay, StaysWithinItsBytesAtEveryTimeBaseOfThePass) {
    for (const double resolution :
         {7812.0, 15625.0, 31250.0, 78125.0, 156250.0, 312500.0, 780125.0, 1562500.0}) {
        for (int index = 1; index <= 640; ++index) {
            const PointDelay delay = point_delay(index, resolution);
            ASSERT_GT(delay.coarse, 0) << index << " at " << resolution;
            ASSERT_LE(delay.coarse, 10500) << index << " at " << resolution;
            ASSERT_GE(delay.second, 1) << index << " at " << resolution;
            ASSERT_LE(delay.second, 65535) << index << " at " << resolution;
        }
    }
}

struct PointFrameRow {
    int index;
    double tbresolution;
    CommandArguments ch1;
    CommandArguments ch2;
};

TEST(PointDelay, FillsTheSinglePointCommandOfBothChannels) {
    const PointFrameRow frames[] = {
        {1, 8000.0, {0, 41, 4, 0, 1, 240}, {0, 169, 4, 0, 1, 240}},
        {1, 8001.0, {0, 13, 172, 0, 1, 239}, {0, 141, 172, 0, 1, 239}},
        {640, 1562500.0, {0, 41, 4, 23, 48, 237}, {0, 169, 4, 23, 48, 237}},
    };
    for (const PointFrameRow& row : frames) {
        CommandArguments arguments = {};
        fill_sample(arguments, point_delay(row.index, row.tbresolution), ch1);
        EXPECT_EQ(arguments, row.ch1);
        fill_sample(arguments, point_delay(row.index, row.tbresolution), ch2);
        EXPECT_EQ(arguments, row.ch2);
    }
}

} // namespace
} // namespace kv408
