#include "bench_driver.h"

namespace kv408::simulator {
namespace {

class Commands : public BenchDriver {};

TEST_F(Commands, SetUpCommandsAreAcknowledgedWellWithinTwentyMilliseconds) {
    for (const int command : {8, 9, 27, 29, 30, 31, 35}) {
        const double start = now_us();
        send(command, {0, 0, 1, 0, 255});
        EXPECT_NEAR(now_us() - start, 8 * byte_us, 0.01) << command;
        EXPECT_EQ(read(1), std::vector<Byte>{6}) << command;
        // Frame, 200 us, one byte.
        EXPECT_NEAR(now_us() - start, 8 * byte_us + 200.0 + byte_us, 0.01) << command;
        EXPECT_EQ(waiting(), 0U) << command;
    }
}

TEST_F(Commands, UnknownCommandsAndFlashWritesGetNoReply) {
    for (const int command : {0, 1, 7, 10, 25, 28, 34, 36, 255}) {
        send(command, {0xA4, 0x70, 0, 0, 0});
        clock_.advance(milliseconds(500));
        EXPECT_EQ(waiting(), 0U) << command;
    }
}

TEST_F(Commands, SettingsArriveAsSent) {
    set_up(8, {8, 100, 22, 255, 17});
    set_up(27, {0x13, 0x88, 22, 255, 17});
    set_up(9, {2, 1, 0, 0, 0});
    set_up(30, long_arguments(-2500));
    set_up(35, long_arguments(123456));
    set_up(31, long_arguments(1562500));
    const Settings& settings = simulation_.settings();
    EXPECT_EQ(settings.trigger.input, 1U);
    EXPECT_FALSE(settings.trigger.rising);
    EXPECT_EQ(settings.trigger.level_mv, 100);
    EXPECT_EQ(settings.trigger.hysteresis_mv, 17);
    EXPECT_EQ(settings.trigger.time_out_us, 5000);
    EXPECT_EQ(settings.range[0], low_range);
    EXPECT_EQ(settings.range[1], high_range);
    EXPECT_EQ(settings.offset_ps[0], -2500);
    EXPECT_EQ(settings.offset_ps[1], 123456);
    EXPECT_EQ(settings.resolution_ps, 1562500);
}

TEST_F(Commands, TriggerCodesChooseSourceEdgeAndHysteresisByte) {
    struct Row {
        int code;
        std::size_t input;
        bool rising;
        int hysteresis;
    };
    for (const Row& row :
         {Row{1, 0, true, 30}, Row{2, 0, false, 30}, Row{21, 1, true, 40}, Row{22, 1, false, 40}}) {
        set_up(8, {8, 0, row.code, 30, 40});
        const TriggerSettings& trigger = simulation_.settings().trigger;
        EXPECT_EQ(trigger.input, row.input) << row.code;
        EXPECT_EQ(trigger.rising, row.rising) << row.code;
        EXPECT_EQ(trigger.hysteresis_mv, row.hysteresis) << row.code;
    }
}

TEST_F(Commands, TriggerLevelIsASignedWord) {
    set_up(8, {0, 0, 1, 0, 255}); // the start-up check
    EXPECT_EQ(simulation_.settings().trigger.level_mv, -2048);
    set_up(8, {255, 255, 1, 0, 255});
    EXPECT_EQ(simulation_.settings().trigger.level_mv, -2049);
}

TEST_F(Commands, TriggerTimeOutIsAtLeastTen) {
    set_up(27, {0, 3, 1, 0, 255});
    EXPECT_EQ(simulation_.settings().trigger.time_out_us, 10);
    set_up(27, {255, 255, 1, 0, 255});
    EXPECT_EQ(simulation_.settings().trigger.time_out_us, 65535);
}

TEST_F(Commands, GainCodesOtherThanOneAndTwoChangeNothing) {
    set_gain(2, 1);
    set_up(9, {0, 3, 0, 0, 0});
    EXPECT_EQ(simulation_.settings().range[0], low_range);
    EXPECT_EQ(simulation_.settings().range[1], high_range);
}

TEST_F(Commands, BlockComesAfterTheSweepByteByByte) {
    set_trigger(0, 1);
    struct Row {
        bool average;
        bool fast;
        double sweep_us; // 650 points at 20 us, 10 us with speed, four times as long averaged
    };
    for (const Row& row : {Row{false, false, 13000.0}, Row{false, true, 6500.0},
                           Row{true, false, 52000.0}, Row{true, true, 26000.0}}) {
        send(32, {2, 138, row.average ? 1 : 0, row.fast ? 1 : 0, 1});
        const auto ready = clock_.now();
        const auto after = [&](double microseconds_later) {
            const auto target = ready + nanoseconds(std::int64_t(microseconds_later * 1000.0));
            clock_.advance(target - clock_.now());
            return waiting();
        };
        EXPECT_EQ(after(row.sweep_us + byte_us - 1.0), 0U);
        EXPECT_EQ(after(row.sweep_us + byte_us + 1.0), 1U);
        EXPECT_EQ(after(row.sweep_us + 650 * byte_us + 1.0), 650U);
        EXPECT_EQ(after(row.sweep_us + 1300 * byte_us - 1.0), 1299U);
        EXPECT_EQ(after(row.sweep_us + 1300 * byte_us + 1.0), 1300U);
        // The program arms again when fewer than two bytes came within its tick.
        EXPECT_LT(now_us() - static_cast<double>(ready.count()) / 1000.0, 90000.0);
        EXPECT_EQ(after(150000.0), 1300U);
        EXPECT_EQ(read(1300).size(), 1300U);
    }
}

TEST_F(Commands, SweepSendsAsManyPointsAsAsked) {
    set_trigger(0, 1);
    send(32, {0, 10, 0, 0, 1});
    clock_.advance(milliseconds(100));
    EXPECT_EQ(waiting(), 20U);
    read(20);
    send(32, {255, 255, 0, 0, 1});
    clock_.advance(milliseconds(100));
    EXPECT_EQ(waiting(), 1300U);
}

TEST_F(Commands, OnePointComesAfterOneConversion) {
    set_trigger(0, 1);
    const double start = now_us();
    send(26, {0x29, 0x04, 0, 1, 240});
    EXPECT_EQ(read(2).size(), 2U);
    EXPECT_NEAR(now_us() - start, 10 * byte_us + 20.0, 0.01);
}

TEST_F(Commands, OnePointWaitsForASlowTrigger) {
    bench().sources[0].frequency_hz = 1000.0; // 1 ms
    set_trigger(0, 1);
    clock_.advance(microseconds(7200) - clock_.now());
    send(26, {0x29, 0x04, 0, 1, 240});
    EXPECT_EQ(read(2).size(), 2U);
    // The sine rises through 0 at each whole millisecond.
    EXPECT_NEAR(now_us(), 8000.0 + 2 * byte_us, 0.02);
}

TEST_F(Commands, LinearityCalibrationSendsAByteEvery225Milliseconds) {
    send(29, {0, 0, 0, 0, 0});
    const auto start = clock_.now();
    EXPECT_EQ(read(1), std::vector<Byte>{6});
    for (int point = 1; point <= 20; ++point) {
        clock_.advance(start + point * milliseconds(225) - clock_.now());
        EXPECT_EQ(waiting(), static_cast<std::uint32_t>(point - 1));
        clock_.advance(microseconds(20));
        EXPECT_EQ(waiting(), static_cast<std::uint32_t>(point));
    }
}

TEST_F(Commands, LinearityCalibrationSends8000SmallErrorsAndStops) {
    set_up(29, {0, 0, 0, 0, 0});
    clock_.advance(std::chrono::hours(1)); // 8000 * 225 ms are half an hour
    EXPECT_EQ(waiting(), 8000U);
    int at_most_one = 0;
    int larger = 0;
    for (const Byte byte : read(8000)) {
        const int magnitude = byte > 128 ? 256 - byte : byte;
        EXPECT_LE(magnitude, 5);
        (magnitude <= 1 ? at_most_one : larger) += 1;
    }
    EXPECT_GT(at_most_one, 7000);
    EXPECT_GT(larger, 0);
}

TEST_F(Commands, AnotherCommandEndsTheLinearityCalibration) {
    set_up(29, {0, 0, 0, 0, 0});
    clock_.advance(milliseconds(225 * 3 + 1));
    EXPECT_EQ(read(3).size(), 3U);
    set_up(31, long_arguments(5));
    clock_.advance(milliseconds(2000));
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Commands, ACommandBreaksOffABlock) {
    set_trigger(0, 1);
    send(32, {2, 138, 0, 0, 1});
    clock_.advance(microseconds(13000 + 4800)); // just under 400 bytes
    const std::uint32_t before = waiting();
    EXPECT_GT(before, 390U);
    EXPECT_LT(before, 400U);
    send(31, long_arguments(5));
    clock_.advance(milliseconds(100));
    // While the frame was on its way eight or nine more bytes came, then the acknowledge.
    const auto bytes = read(2000);
    EXPECT_GE(bytes.size(), before + 9);
    EXPECT_LE(bytes.size(), before + 10);
    EXPECT_EQ(bytes.back(), 6);
}

TEST_F(Commands, GarbageAndHalfFramesBetweenCommandsDoNoHarm) {
    write({1, 2, 3, 4, 4, 4, 9});
    set_up(31, long_arguments(7));
    EXPECT_EQ(simulation_.settings().resolution_ps, 7);
    write({4, 31, 0, 0});
    clock_.advance(milliseconds(6));
    set_up(31, long_arguments(9));
    EXPECT_EQ(simulation_.settings().resolution_ps, 9);
    auto wrong = frame(31, long_arguments(11));
    wrong[7] ^= 1;
    write(wrong);
    EXPECT_TRUE(read(1).empty());
    EXPECT_EQ(simulation_.settings().resolution_ps, 9);
}

} // namespace
} // namespace kv408::simulator
