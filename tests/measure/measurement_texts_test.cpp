#include "measure/measurement_texts.h"

#include <string>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

constexpr double samplerate = 64.0 / 20e-9; // 20ns/div: a column is 312.5 ps

/// A record and its texts.
struct Written {
    explicit Written(const MeasurementRecord& measured, double columns_a_second = samplerate)
        : record(measured) {
        formatmeasvals(texts, record, columns_a_second);
    }

    MeasurementRecord record;
    MeasurementTexts texts;
};

TEST(MeasurementTexts, VoltagesHaveFourDigits) {
    MeasurementRecord record = {};
    record[meas::vmax] = 1234.5678;
    record[meas::vmin] = -123.45678;
    record[meas::top] = 12.345678;
    record[meas::base] = -0.0012345678;
    record[meas::amplitude] = 0.0;
    record[meas::mid] = 55.0;
    record[meas::vpp] = 1000.0;
    record[meas::vrms] = 0.3;
    record[meas::vmean] = 300.0;
    const Written written(record);
    EXPECT_EQ(written.texts[meas::vmax], "1.234V");
    EXPECT_EQ(written.texts[meas::vmin], "-123.4mV");
    EXPECT_EQ(written.texts[meas::top], "12.34mV");
    EXPECT_EQ(written.texts[meas::base], "-1.234uV");
    EXPECT_EQ(written.texts[meas::amplitude], "0.000V");
    EXPECT_EQ(written.texts[meas::vpp], "1.000V");
    EXPECT_EQ(written.texts[meas::vrms], "300.0uV");
    EXPECT_EQ(written.texts[meas::vmean], "300.0mV");
    EXPECT_EQ(written.texts[meas::mid], ""); // never written
}

TEST(MeasurementTexts, TimesAreColumnsAtTheTimeBase) {
    MeasurementRecord record = {};
    record[meas::rise] = 3.2;
    record[meas::fall] = 6.4;
    record[meas::pulse_high] = 64.0;
    record[meas::pulse_low] = 96.0;
    const Written written(record);
    EXPECT_EQ(written.texts[meas::rise], "1.000ns");
    EXPECT_EQ(written.texts[meas::fall], "2.000ns");
    EXPECT_EQ(written.texts[meas::pulse_high], "20.00ns");
    EXPECT_EQ(written.texts[meas::pulse_low], "30.00ns");
    EXPECT_EQ(written.texts[meas::period], "50.00ns");
    EXPECT_EQ(written.texts[meas::frequency], "20.00MHz");
    EXPECT_EQ(written.record[meas::period], 160.0);
    EXPECT_EQ(written.record[meas::frequency], 1.0 / 160.0);
}

TEST(MeasurementTexts, ATimeBaseFiveThousandTimesSlowerScalesThem) {
    MeasurementRecord record = {};
    record[meas::rise] = 3.2;
    record[meas::pulse_high] = 64.0;
    record[meas::pulse_low] = 96.0;
    const Written written(record, 64.0 / 100e-6);
    EXPECT_EQ(written.texts[meas::rise], "5.000us");
    EXPECT_EQ(written.texts[meas::period], "250.0us");
    EXPECT_EQ(written.texts[meas::frequency], "4.000kHz");
}

TEST(MeasurementTexts, WithoutAWidthThereIsNoPeriodAndNoFrequency) {
    for (const double missing : {0.0, -1.0}) {
        for (const std::size_t without : {meas::pulse_high, meas::pulse_low}) {
            const std::size_t with =
                without == meas::pulse_high ? meas::pulse_low : meas::pulse_high;
            MeasurementRecord record = {};
            record[meas::period] = 111.0;
            record[meas::frequency] = 222.0;
            record[with] = 64.0;
            record[without] = missing;
            const Written written(record);
            EXPECT_EQ(written.texts[with], "20.00ns");
            EXPECT_EQ(written.texts[without], "---");
            EXPECT_EQ(written.texts[meas::period], "---");
            EXPECT_EQ(written.texts[meas::frequency], "---");
            EXPECT_EQ(written.record[meas::period], 111.0) << "keeps what it was";
            EXPECT_EQ(written.record[meas::frequency], 222.0);
        }
    }
}

TEST(MeasurementTexts, WhatIsShorterThanAColumnIsMeasured) {
    MeasurementRecord record = {};
    record[meas::rise] = 0.5;
    record[meas::fall] = 0.25;
    record[meas::pulse_high] = 0.25;
    record[meas::pulse_low] = 0.5;
    const Written written(record, 1e9);
    EXPECT_EQ(written.texts[meas::rise], "500.0ps");
    EXPECT_EQ(written.texts[meas::fall], "250.0ps");
    EXPECT_EQ(written.texts[meas::pulse_high], "250.0ps");
    EXPECT_EQ(written.texts[meas::pulse_low], "500.0ps");
    EXPECT_EQ(written.texts[meas::period], "750.0ps");
    EXPECT_EQ(written.texts[meas::frequency], "1.333GHz");
}

TEST(MeasurementTexts, AnEdgeOfNoTimeIsInfinitelyFastAndNoEdgeIsMissing) {
    MeasurementRecord record = {};
    record[meas::rise] = 0.0;
    record[meas::fall] = -1.0;
    EXPECT_EQ(Written(record).texts[meas::rise], "-inf-");
    EXPECT_EQ(Written(record).texts[meas::fall], "---");
    record[meas::rise] = -1.0;
    record[meas::fall] = 0.0;
    EXPECT_EQ(Written(record).texts[meas::rise], "---");
    EXPECT_EQ(Written(record).texts[meas::fall], "-inf-");
}

} // namespace
} // namespace kv408
