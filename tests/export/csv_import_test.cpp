#include "export/csv_import.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/sample_sweep.h"

namespace kv408 {
namespace {

TEST(CsvImport, WhatWasSavedComesBack) {
    for (const Sweep& sweep : {block_sweep(), block_sweep(64.0), pass_sweep()}) {
        const ExportedSweep saved = exported(sweep);
        const CsvImport read = csv_import(csv_text(saved));
        ASSERT_TRUE(read.sweep) << read.problem;
        ASSERT_EQ(read.sweep->channels.size(), saved.channels.size());
        for (std::size_t channel = 0; channel < saved.channels.size(); ++channel) {
            const ExportedChannel& before = saved.channels[channel];
            const ExportedChannel& after = read.sweep->channels[channel];
            EXPECT_EQ(after.name, before.name);
            EXPECT_EQ(after.first_time, before.first_time);
            EXPECT_EQ(after.interval, before.interval);
            EXPECT_EQ(after.v_per_div, before.v_per_div);
            EXPECT_EQ(after.position, before.position);
            EXPECT_EQ(after.delay, before.delay);
            ASSERT_EQ(after.mv.size(), before.mv.size());
            EXPECT_NEAR(after.mv[3], before.mv[3], 1e-9);
        }
        EXPECT_EQ(csv_text(*read.sweep), csv_text(saved)) << "to the last digit";
    }
}

TEST(CsvImport, TakesLineEndsOfEitherKindAndUnknownComments) {
    const CsvImport read = csv_import("# Kv408 9.9.9\r\n# weather: fair: dry\r\n#\r\n"
                                      "Time (s),CH1 (V)\r\n0,1\r\n1e-9,-2\r\n\r\n");
    ASSERT_TRUE(read.sweep) << read.problem;
    EXPECT_EQ(read.sweep->version, "9.9.9");
    EXPECT_EQ(read.sweep->channels[0].mv, (std::vector<double>{1000.0, -2000.0}));
    EXPECT_EQ(read.sweep->channels[0].interval, 1000.0);
}

TEST(CsvImport, WhatIsNoneOfOursIsRefusedWithItsLine) {
    const std::string headings = "Time (s),CH1 (V)\n";
    for (const auto& [text, problem] : std::vector<std::pair<std::string, std::string>>{
             {"", "there are no points in it"},
             {headings, "there are no points in it"},
             {"PK\x03\x04", "line 1: no headings of ours: PK\x03\x04"},
             {"Time (s)\n0\n", "line 1: no headings of ours: Time (s)"},
             {"Time (s),CH3 (V)\n0,1\n", "line 1: no headings of ours: Time (s),CH3 (V)"},
             {"CH1 (V),Time (s)\n0,1\n", "line 1: no headings of ours: CH1 (V),Time (s)"},
             {"Time (s),CH1 (V),CH1 (V)\n",
              "line 1: no headings of ours: Time (s),CH1 (V),CH1 (V)"},
             {headings + "0,1\n1e-9\n", "line 3: not 2 values"},
             {headings + "0,1\n1e-9,much\n", "line 3: not a number: much"},
             {headings + "0,nan\n", "line 2: not a number: nan"},
             {headings + "0,1\n1e-9,2\n3e-9,3\n", "CH1: the times are not evenly spaced"},
             {headings + "0,1\n1e-9,\n", "CH1: the times are not evenly spaced"},
             {headings + "1e300,1\n", "CH1: the times are not evenly spaced"},
             {"# time/div: long\n" + headings, "line 1: no time per division"},
             {"# CH1 V/div: tall\n" + headings, "line 1: not a number: tall"}}) {
        const CsvImport read = csv_import(text);
        EXPECT_FALSE(read.sweep) << text;
        EXPECT_EQ(read.problem, problem) << text;
    }
}

} // namespace
} // namespace kv408
