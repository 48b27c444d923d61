#include "export/csv.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "export/sample_sweep.h"

namespace kv408 {
namespace {

/// The lines from number `first` on, from 1, `count` of them.
std::string lines_of(const std::string& text, int first, int count) {
    std::size_t begin = 0;
    for (int line = 1; line < first; ++line) {
        begin = text.find('\n', begin) + 1;
    }
    std::size_t end = begin;
    for (int line = 0; line < count; ++line) {
        end = text.find('\n', end) + 1;
    }
    return text.substr(begin, end - begin);
}

TEST(Csv, SaysWhatTheSweepWasTakenWithAndThenGivesItsPoints) {
    const std::string text = csv_text(exported(block_sweep()));
    EXPECT_EQ(lines_of(text, 1, 18), "# Kv408 1.6.0\n"
                                     "# serial: lm4rxa-SIM00001\n"
                                     "# date: 2026-11-22T13:05:09.250+01:00\n"
                                     "# mode: block\n"
                                     "# sweep: 7\n"
                                     "# time/div: 20ns\n"
                                     "# interval (s): 3.13e-10\n"
                                     "# CH1 V/div: 0.1\n"
                                     "# CH1 position (div): 2.5\n"
                                     "# CH1 delay (s): 0\n"
                                     "# CH2 V/div: 0.2\n"
                                     "# CH2 position (div): -1\n"
                                     "# CH2 delay (s): 0\n"
                                     "# trigger: TRIG2, negative edge, 0.012 V, hysteresis 10, "
                                     "time-out 1000 us\n"
                                     "# averaging: off\n"
                                     "Time (s),CH1 (V),CH2 (V)\n"
                                     "0,-0.024,0.024\n"
                                     "3.13e-10,-0.0235,0.0235\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 16 + 650);
    EXPECT_EQ(lines_of(text, 16 + 650, 1), "2.03137e-07,0.3005,-0.3005\n");
    EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST(Csv, ChannelsWithDifferentDelaysHaveTimesOfTheirOwn) {
    const std::string text = csv_text(exported(block_sweep(64.0)));
    EXPECT_EQ(lines_of(text, 13, 1), "# CH2 delay (s): 6.4e-11\n");
    EXPECT_EQ(lines_of(text, 16, 3), "Time CH1 (s),CH1 (V),Time CH2 (s),CH2 (V)\n"
                                     "0,-0.024,6.4e-11,0.024\n"
                                     "3.13e-10,-0.0235,3.77e-10,0.0235\n");
}

TEST(Csv, APassBeginsOneStepAfterTheTrigger) {
    const std::string text = csv_text(exported(pass_sweep()));
    EXPECT_EQ(lines_of(text, 4, 1), "# mode: point\n");
    EXPECT_EQ(lines_of(text, 6, 2), "# time/div: 500ns\n# interval (s): 7.812e-09\n");
    EXPECT_EQ(lines_of(text, 12, 4), "# averaging: on\n"
                                     "Time (s),CH2 (V)\n"
                                     "7.812e-09,0.000166666666667\n"
                                     "1.5624e-08,0.000333333333333\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 13 + 640);
}

TEST(Csv, TheClipboardGetsHeadingsAndPointsWithTabs) {
    const std::string text = tab_separated(exported(block_sweep()));
    EXPECT_EQ(lines_of(text, 1, 2), "Time (s)\tCH1 (V)\tCH2 (V)\n0\t-0.024\t0.024\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 651);
}

} // namespace
} // namespace kv408
