#include "export/references.h"

#include <gtest/gtest.h>

#include "export/csv.h"
#include "export/csv_import.h"
#include "export/sample_sweep.h"

namespace kv408 {
namespace {

TEST(References, AreKeptFromAChannelShownAndHidden) {
    References references;
    EXPECT_FALSE(references.at(2));
    EXPECT_TRUE(references.keep(2, exported(block_sweep()), "CH2"));
    ASSERT_TRUE(references.at(2));
    EXPECT_EQ(references.at(2)->name, "R3 CH2 sweep 7");
    EXPECT_EQ(references.at(2)->channel(), exported(block_sweep()).channels[1]);
    EXPECT_DOUBLE_EQ(references.at(2)->sweep.time_per_div, 20000.0);
    EXPECT_EQ(references.at(2)->caption(), "R3 CH2 sweep 7   0.2V/div   20ns/div");
    EXPECT_EQ(references.at(2)->curve->channel, ch2);
    EXPECT_EQ(references.at(2)->curve->mv, references.at(2)->channel().mv);
    EXPECT_TRUE(references.at(2)->shown);
    references.toggle(2);
    EXPECT_FALSE(references.at(2)->shown);
    references.toggle(2);
    EXPECT_TRUE(references.at(2)->shown);
    references.toggle(0); // empty
    EXPECT_FALSE(references.at(0));
    EXPECT_FALSE(references.keep(2, exported(pass_sweep()), "CH1")) << "was off";
    EXPECT_EQ(references.at(2)->name, "R3 CH2 sweep 7");
    references.clear(2);
    EXPECT_FALSE(references.at(2));
}

/// A file that says nothing but its points.
TEST(References, SayOnlyWhatTheyKnow) {
    References references;
    references.keep_loaded(1, "plain.csv",
                           csv_import("Time (s),CH2 (V)\n0,0.5\n1e-9,0.25\n").sweep.value(), 0);
    EXPECT_EQ(references.at(1)->caption(), "R2 plain.csv");
    EXPECT_EQ(references.at(1)->curve->channel, ch2);
    EXPECT_DOUBLE_EQ(references.at(1)->curve->interval, 1000.0);
    EXPECT_EQ(references.at(1)->curve->mv, (std::vector<double>{500.0, 250.0}));
}

TEST(References, AreLoadedFromAFile) {
    References references;
    const CsvImport file = csv_import(csv_text(exported(block_sweep(64.0))));
    references.keep_loaded(0, "curve.csv", file.sweep.value(), 1);
    EXPECT_EQ(references.at(0)->name, "R1 curve.csv");
    EXPECT_EQ(references.at(0)->channel().name, "CH2");
    EXPECT_EQ(references.at(0)->channel().v_per_div, 0.2);
    EXPECT_EQ(references.at(0)->sweep.time_per_div, 20000.0);
}

} // namespace
} // namespace kv408
