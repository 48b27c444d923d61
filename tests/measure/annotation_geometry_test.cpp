#include "measure/annotation_geometry.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

/// 0.1V/div, CH1 a division above the centre, CH2 one below, CH2 by way of the trigger input.
Channels channels() {
    Channels channels;
    for (ChannelState& channel : channels) {
        channel.atten = 0.5;
        channel.scale = 512.0 / 1600.0;
        channel.pixpermv = 0.64;
    }
    channels[ch1].pos = 192;
    channels[ch1].offsetdac = 2048 - 200; // 64 rows are 200 codes
    channels[ch2].pos = 320;
    channels[ch2].offsetdac = 2048 + 100; // 64 rows are 100 codes of twice the height
    channels[ch2].vtfactor = 2.0;
    return channels;
}

TEST(LevelLine, LiesAcrossThePlotAtItsLevel) {
    EXPECT_EQ(annolevelline(channels()[ch1], 100.0), (AnnotationGeometry{{{1, 128}, {639, 128}}}));
    EXPECT_EQ(annolevelline(channels()[ch2], 100.0), (AnnotationGeometry{{{1, 256}, {639, 256}}}));
    EXPECT_EQ(annolevelline(channels()[ch1], 0.0), (AnnotationGeometry{{{1, 192}, {639, 192}}}));
    EXPECT_EQ(annolevelline(channels()[ch2], -200.0), (AnnotationGeometry{{{1, 448}, {639, 448}}}));
}

TEST(LevelLine, RoundsItsRowHalvesToEven) {
    Channels both = channels();
    both[ch1].pixpermv = 0.5;
    EXPECT_EQ(annolevelline(both[ch1], 1.0)[0].y, 192); // 191.5
    EXPECT_EQ(annolevelline(both[ch1], 3.0)[0].y, 190); // 190.5
    EXPECT_EQ(annolevelline(both[ch1], 0.9)[0].y, 192); // 191.55
}

TEST(MarkSquare, LiesAroundTheTraceBetweenItsSamples) {
    Samples samples;
    samples[ch1].raw[100] = 2048;
    samples[ch1].raw[101] = 2148;
    // CH1: a row is 3.125 codes; 2048 lies on row 192.
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 100.0),
              (AnnotationGeometry{{{96, 188}, {104, 196}}}));
    // Half way: 50 codes, 16 rows up.
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 100.5),
              (AnnotationGeometry{{{96, 172}, {104, 180}}}));
    // 97.75 to 98; three quarters: 24 rows up.
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 100.75),
              (AnnotationGeometry{{{97, 164}, {105, 172}}}));
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 101.0),
              (AnnotationGeometry{{{97, 156}, {105, 164}}}));
    // CH2: a row is 1.5625 codes; 2048 lies on row 320.
    samples[ch2].raw[100] = 2048;
    samples[ch2].raw[101] = 2148;
    EXPECT_EQ(annomarkrect(channels()[ch2], samples[ch2], 100.5),
              (AnnotationGeometry{{{96, 284}, {104, 292}}}));
}

TEST(MarkSquare, MovesWithTheTrace) {
    Channels both = channels();
    both[ch1].delaypts = 30;
    both[ch1].shown_delaypts = 10;
    Samples samples;
    samples[ch1].raw.fill(2048);
    EXPECT_EQ(annomarkrect(both[ch1], samples[ch1], 100.0),
              (AnnotationGeometry{{{76, 188}, {84, 196}}}));
}

TEST(MarkSquare, MayLieOutsideThePlot) {
    Samples samples;
    samples[ch1].raw.fill(4095);
    // (1848 - 4095) * 0.32 + 256 = -463.04
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 1.0),
              (AnnotationGeometry{{{-3, -467}, {5, -459}}}));
    samples[ch1].raw.fill(2048);
    EXPECT_EQ(annomarkrect(channels()[ch1], samples[ch1], 7499.5),
              (AnnotationGeometry{{{7496, 188}, {7504, 196}}}));
}

} // namespace
} // namespace kv408
