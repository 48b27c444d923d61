#include "bench_driver.h"

#include <algorithm>

namespace kv408::simulator {
namespace {

/// A simulation whose device is not open yet.
class Listing : public ::testing::Test {
protected:
    TestBench& bench() { return simulation_.bench(); }
    Bridge& bridge() { return simulation_.bridge(); }

    std::uint32_t devices() {
        const Counted counted = bridge().count_devices();
        EXPECT_EQ(counted.status, bridge_success);
        return counted.count;
    }

    std::string serial(std::uint32_t index) {
        const SerialNumber number = bridge().serial_number(index);
        EXPECT_EQ(number.status, bridge_success);
        return number.text;
    }

    VirtualClock clock_;
    Simulation simulation_{clock_};
};

TEST_F(Listing, TheDefaultDeviceIsOneThatTheProgramOpens) {
    EXPECT_EQ(devices(), 1U);
    EXPECT_EQ(serial(0).substr(0, 6), "lm4rxa");
    EXPECT_GE(serial(0).size(), 14U);
}

TEST_F(Listing, DevicesAreListedInOrderWithAnyBytes) {
    bench().devices = {{""}, {"\xFF\x01 b"}, {std::string(256, 'x')}, {std::string(300, 'y')}};
    EXPECT_EQ(devices(), 4U);
    EXPECT_EQ(serial(0), "");
    EXPECT_EQ(serial(1), "\xFF\x01 b");
    EXPECT_EQ(serial(2), std::string(256, 'x'));
    EXPECT_EQ(serial(3), std::string(256, 'y'));
    bench().devices.clear();
    EXPECT_EQ(devices(), 0U);
}

TEST_F(Listing, OnlyTheSerialNumberOfRealDevicesIsKnown) {
    EXPECT_EQ(bridge().serial_number(1).status, bridge_failed);
}

TEST_F(Listing, OpensAndClosesOnce) {
    EXPECT_EQ(bridge().open(1), bridge_failed);
    ASSERT_EQ(bridge().open(0), bridge_success);
    EXPECT_EQ(bridge().open(0), bridge_failed);
    EXPECT_EQ(bridge().close(), bridge_success);
    EXPECT_EQ(bridge().close(), bridge_failed);
    EXPECT_EQ(bridge().open(0), bridge_success);
}

TEST_F(Listing, ADeviceMayRefuseToOpen) {
    bench().devices = {{"lm4rxa-AAAAAAAA", false}, {"lm4rxa-BBBBBBBB"}};
    EXPECT_EQ(bridge().open(0), bridge_failed);
    EXPECT_EQ(bridge().open(1), bridge_success);
}

TEST_F(Listing, NothingWorksWhileNothingIsOpen) {
    std::array<Byte, 8> bytes{};
    EXPECT_EQ(bridge().set_speed(833000), bridge_failed);
    EXPECT_EQ(bridge().flush(), bridge_failed);
    EXPECT_EQ(bridge().write(bytes), bridge_failed);
    for (const Counted& counted : {bridge().read(bytes), bridge().waiting()}) {
        EXPECT_EQ(counted.status, bridge_failed);
        EXPECT_EQ(counted.count, 0U);
    }
    EXPECT_EQ(bridge().close(), bridge_failed);
    EXPECT_EQ(clock_.now(), nanoseconds(0)); // failing takes no time
}

class OpenBridge : public BenchDriver {};

TEST_F(OpenBridge, AnEmptyQueueTimesOutAfterTheReadTimeOut) {
    for (const int time_out : {0, 1, 100, 1000}) {
        bridge().set_time_out(static_cast<std::uint32_t>(time_out));
        const auto start = clock_.now();
        EXPECT_TRUE(read(1).empty());
        EXPECT_EQ(status_, bridge_read_timed_out);
        EXPECT_EQ(clock_.now() - start, milliseconds(time_out));
    }
}

TEST_F(OpenBridge, PartOfTheDataIsASuccessAfterTheTimeOut) {
    bridge().set_time_out(50);
    send(31, {0, 0, 0, 9, 0});
    const auto start = clock_.now();
    EXPECT_EQ(read(3), std::vector<Byte>{6});
    EXPECT_EQ(status_, bridge_success);
    EXPECT_EQ(clock_.now() - start, milliseconds(50));
}

TEST_F(OpenBridge, ReadingWhatWaitsTakesNoTime) {
    send(31, {0, 0, 0, 9, 0});
    clock_.advance(milliseconds(20));
    const auto start = clock_.now();
    EXPECT_EQ(read(1), std::vector<Byte>{6});
    EXPECT_EQ(clock_.now(), start);
    EXPECT_TRUE(read(0).empty());
    EXPECT_EQ(status_, bridge_success);
    EXPECT_EQ(clock_.now(), start);
}

TEST_F(OpenBridge, ReadingTakesBytesInOrderAndLeavesTheRest) {
    set_up(8, {8, 0, 1, 10, 255});
    send(32, {2, 138, 0, 0, 1});
    clock_.advance(milliseconds(100));
    const auto first = read(3);
    EXPECT_EQ(waiting(), 1297U);
    const auto rest = read(1400);
    EXPECT_EQ(rest.size(), 1297U);
    // 2048 at the level: high byte 8 is first, also of the second word.
    EXPECT_EQ(first[0] & ~15, 0);
    EXPECT_EQ(first[2] & ~15, 0);
}

TEST_F(OpenBridge, AReadEndsWithTheLastWantedByte) {
    set_up(8, {8, 0, 1, 10, 255});
    const double start = now_us();
    send(32, {2, 138, 0, 0, 1});
    EXPECT_EQ(read(100).size(), 100U);
    EXPECT_NEAR(now_us() - start, 13000.0 + 108 * byte_us, 0.05);
}

TEST_F(OpenBridge, FlushingDropsOnlyWhatHasArrived) {
    set_up(8, {8, 0, 1, 10, 255});
    send(32, {2, 138, 0, 0, 1});
    clock_.advance(microseconds(13000 + 6000));
    const std::uint32_t before = waiting();
    EXPECT_GT(before, 400U);
    EXPECT_EQ(bridge().flush(), bridge_success);
    EXPECT_EQ(waiting(), 0U);
    clock_.advance(milliseconds(100));
    EXPECT_EQ(waiting(), 1300U - before);
}

TEST_F(OpenBridge, NothingSensibleIsAnsweredAtAnotherSpeed) {
    bridge().set_time_out(100);
    for (const std::uint32_t baud_rate : {9600U, 115200U, 800000U, 921600U}) {
        ASSERT_EQ(bridge().set_speed(baud_rate), bridge_success);
        for (int attempt = 0; attempt < 50; ++attempt) {
            send(31, {0, 0, 0, 9, 0});
            EXPECT_TRUE(read(1).empty()) << baud_rate;
        }
        EXPECT_EQ(simulation_.settings().resolution_ps, 1);
    }
    ASSERT_EQ(bridge().set_speed(840000), bridge_success); // within 2 %
    set_up(31, {0, 0, 0, 9, 0});
    EXPECT_EQ(simulation_.settings().resolution_ps, 9);
}

TEST_F(OpenBridge, RepliesReadAtAnotherSpeedAreGarbage) {
    set_up(8, {8, 0, 1, 10, 255});
    bench().samplers[0] = SamplerRoute::disconnected;
    simulation_.set_calibrated();
    bench().sampler_noise_codes = 0.0;
    EXPECT_EQ(sweep(1), std::vector<int>(650, 2048));
    send(32, {2, 138, 0, 0, 1});
    bridge().set_speed(115200);
    const auto garbage = words(read(1300));
    EXPECT_EQ(garbage.size(), 650U);
    EXPECT_LT(std::count(garbage.begin(), garbage.end(), 2048), 10);
}

TEST_F(OpenBridge, OpeningStartsAt9600BaudWithAnEmptyQueue) {
    send(31, {0, 0, 0, 9, 0});
    clock_.advance(milliseconds(20));
    ASSERT_EQ(bridge().close(), bridge_success);
    ASSERT_EQ(bridge().open(0), bridge_success);
    EXPECT_EQ(waiting(), 0U);
    const double start = now_us();
    send(31, {0, 0, 0, 5, 0});
    EXPECT_NEAR(now_us() - start, 80.0e6 / 9600.0, 0.01); // ten bits per byte
    EXPECT_EQ(simulation_.settings().resolution_ps, 9);
    EXPECT_EQ(bridge().set_speed(0), bridge_failed);
}

TEST_F(OpenBridge, ADeviceWithoutInstrumentOpensButIsSilent) {
    ASSERT_EQ(bridge().close(), bridge_success);
    bench().devices = {{"other", true, false}, {"lm4rxa-SIM00002"}};
    ASSERT_EQ(bridge().open(0), bridge_success);
    bridge().set_speed(833000);
    send(31, {0, 0, 0, 9, 0});
    EXPECT_TRUE(read(1).empty());
    ASSERT_EQ(bridge().close(), bridge_success);
    ASSERT_EQ(bridge().open(1), bridge_success);
    bridge().set_speed(833000);
    set_up(31, {0, 0, 0, 9, 0});
}

TEST_F(OpenBridge, TheLogTellsOperationsAndFrames) {
    log_ = {};
    const auto start = clock_.now();
    bridge().set_time_out(100);
    bridge().flush();
    send(31, {0, 0, 0, 9, 0});
    clock_.sleep(milliseconds(20));
    EXPECT_EQ(waiting(), 1U);
    EXPECT_EQ(read(1), std::vector<Byte>{6});
    read(1);

    ASSERT_EQ(log_.operations.size(), 6U);
    EXPECT_EQ(log_.operations[0].operation, Operation::set_timeouts);
    EXPECT_EQ(log_.operations[0].arguments, (std::vector<std::uint32_t>{100, 100}));
    EXPECT_EQ(log_.operations[1].operation, Operation::flush_buffers);
    EXPECT_EQ(log_.operations[1].arguments, (std::vector<std::uint32_t>{1, 1}));
    const WireOperation& written = log_.operations[2];
    EXPECT_EQ(written.operation, Operation::write);
    EXPECT_EQ(written.bytes, (std::vector<Byte>{4, 31, 0, 0, 0, 9, 0, 40}));
    EXPECT_EQ(written.began, start);
    EXPECT_EQ(written.ended - written.began, nanoseconds(96038)); // 80 bits at 833000 baud
    EXPECT_EQ(log_.operations[3].operation, Operation::check_rx_queue);
    EXPECT_EQ(log_.operations[3].count, 1U);
    EXPECT_EQ(log_.operations[3].began, written.ended + milliseconds(20));
    EXPECT_EQ(log_.operations[4].operation, Operation::read);
    EXPECT_EQ(log_.operations[4].bytes, std::vector<Byte>{6});
    EXPECT_EQ(log_.operations[5].status, bridge_read_timed_out);
    EXPECT_EQ(log_.operations[5].ended - log_.operations[5].began, milliseconds(100));

    ASSERT_EQ(log_.frames.size(), 1U);
    EXPECT_EQ(log_.frames[0].time, written.ended);
    EXPECT_EQ(log_.frames[0].command.code, 31);
    EXPECT_EQ(log_.frames[0].command.arguments, (std::array<Byte, 5>{0, 0, 0, 9, 0}));
}

TEST_F(OpenBridge, TheFirstPictureShowsBothSignals) {
    // As delivered, with the trigger at 0 mV and 20 ns per division in low gain.
    set_trigger(0, 1);
    set_gain(2, 2);
    set_resolution(313);
    for (const int channel : {1, 2}) {
        const auto codes = sweep(channel);
        ASSERT_EQ(codes.size(), 650U);
        const auto [least, most] = std::minmax_element(codes.begin(), codes.end());
        // 400 and 300 mVpp at two codes per millivolt, about 3 % off, with some noise.
        EXPECT_NEAR(*most - *least, channel == 1 ? 800 : 600, 50);
        EXPECT_EQ(*most < 4095 && *least > 0, true);
    }
}

} // namespace
} // namespace kv408::simulator
