// The bytes of the files that are no text.

#include <gtest/gtest.h>

#include "export/export_type.h"
#include "export/numpy_file.h"
#include "export/sample_sweep.h"
#include "export/sigrok_session.h"
#include "export/stored_zip.h"

namespace kv408 {
namespace {

TEST(StoredZip, HoldsItsFilesWithTheirCheckSums) {
    const std::array<ZipEntry, 1> entries = {{{"a", "123456789"}}};
    const std::string zip = stored_zip(entries);
    // The check value of this checksum's definition, lowest byte first.
    const std::string description(
        "\x0A\0\0\0\0\0\0\0\x21\0\x26\x39\xF4\xCB\x09\0\0\0\x09\0\0\0\x01\0\0\0", 26);
    EXPECT_EQ(zip.substr(0, 40), "PK\x03\x04" + description + "a123456789");
    EXPECT_EQ(zip.substr(40, 6), std::string("PK\x01\x02\x0A\0", 6));
    EXPECT_EQ(zip.substr(46, 26), description);
    EXPECT_EQ(zip.substr(zip.size() - 22, 4), "PK\x05\x06");
    EXPECT_EQ(zip.size(), 40U + 47U + 22U);
}

TEST(NumpyFile, BeginsItsDataAtAMultipleOf64Bytes) {
    const std::string file = numpy_file(exported(block_sweep()));
    const std::size_t data = file.find('\n') + 1;
    EXPECT_EQ(data % 64, 0U);
    EXPECT_EQ(file.substr(0, 8), std::string("\x93NUMPY\x01\0", 8));
    EXPECT_EQ(static_cast<unsigned char>(file[8]) + 256 * file[9], static_cast<int>(data) - 10);
    EXPECT_EQ(file.size(), data + 15600); // 650 lines of three numbers of 8 bytes
}

TEST(SigrokSession, TellsWhereItRoundsAndWhatItCannotHold) {
    EXPECT_EQ(sigrok_sample_rate(exported(block_sweep())), 3194888179U); // 1e12 / 313 = ...178.91
    EXPECT_EQ(sigrok_remark(exported(block_sweep())).text,
              "The sample rate is rounded to 3194888179 Hz; the points are 313 ps apart.");
    const ExportRemark refused = sigrok_remark(exported(block_sweep(64.0)));
    EXPECT_FALSE(refused.possible);
    EXPECT_EQ(refused.text, "A sigrok session has one time for all channels; the delays of CH1 and "
                            "CH2 differ.");
    Sweep even = block_sweep();
    for (auto& channel : even.channel) {
        ChannelSweep part = *channel;
        part.time_per_point = 16.0; // 62.5 GHz
        channel = std::make_shared<const ChannelSweep>(part);
    }
    EXPECT_EQ(sigrok_remark(exported(even)).text, "");
}

TEST(ExportType, IsThatOfTheNamesEnding) {
    EXPECT_EQ(export_type_of("/tmp/a.b/Curve.csv"), 0U);
    EXPECT_EQ(export_type_of("Curve.SR"), 1U);
    EXPECT_EQ(export_type_of("Curve.csv.Npy"), 2U);
    EXPECT_EQ(export_type_of("Curve.txt"), std::nullopt);
    EXPECT_EQ(export_type_of("csv"), std::nullopt);
}

TEST(ExportType, NamesItsFileAfterTheTime) {
    const LocalTime time = {
        .year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};
    EXPECT_EQ(export_name(export_types()[0], time), "Kv408_260102_030405.csv");
    EXPECT_EQ(export_name(export_types()[1], time), "Kv408_260102_030405.sr");
}

TEST(ExportType, NothingCanBeSavedWithoutAWholeSweep) {
    for (const ExportType& type : export_types()) {
        const ExportRemark remark = export_remark(type, ExportedSweep{});
        EXPECT_FALSE(remark.possible);
        EXPECT_EQ(remark.text, "There is no whole sweep of a channel that is on.");
        EXPECT_TRUE(export_remark(type, exported(pass_sweep())).possible);
    }
    EXPECT_FALSE(export_remark(export_types()[1], exported(block_sweep(64.0))).possible);
}

} // namespace
} // namespace kv408
