#include "bench_driver.h"

#include <algorithm>
#include <functional>

namespace kv408::simulator {
namespace {

class Fault : public BenchDriver {
protected:
    Fault() {
        make_exact();
        bridge().set_time_out(100);
    }

    Faults& faults() { return bench().faults; }

    /// The reply to a set-up command, up to ten bytes.
    std::vector<Byte> acknowledge() {
        send(31, {0, 0, 0, 9, 0});
        return read(10);
    }

    /// Does `operation` once, rightly; returns its status.
    BridgeStatus perform(Operation operation) {
        std::array<Byte, 8> bytes = {4, 31, 0, 0, 0, 9, 0, 40};
        switch (operation) {
        case Operation::get_num_devices:
            return bridge().count_devices().status;
        case Operation::get_product_string:
            return bridge().serial_number(0).status;
        case Operation::open:
            return open_again();
        case Operation::close:
            return close();
        case Operation::set_baud_rate:
            return bridge().set_speed(833000);
        case Operation::set_timeouts:
            return bridge().set_time_out(100);
        case Operation::flush_buffers:
            return bridge().flush();
        case Operation::write:
            return bridge().write(bytes);
        case Operation::read:
            clock_.advance(milliseconds(20));
            return bridge().read(std::span(bytes).first(1)).status;
        case Operation::check_rx_queue:
            return bridge().waiting().status;
        }
        return bridge_failed;
    }

    BridgeStatus open_again() {
        if (open_) {
            close();
        }
        const BridgeStatus status = bridge().open(0);
        open_ = status == bridge_success;
        return status;
    }

    BridgeStatus close() {
        const BridgeStatus status = bridge().close();
        open_ = status != bridge_success;
        return status;
    }

    bool open_ = true;
};

constexpr std::array<Operation, 10> operations = {Operation::get_num_devices,
                                                  Operation::get_product_string,
                                                  Operation::open,
                                                  Operation::set_baud_rate,
                                                  Operation::set_timeouts,
                                                  Operation::flush_buffers,
                                                  Operation::write,
                                                  Operation::check_rx_queue,
                                                  Operation::read,
                                                  Operation::close};

TEST_F(Fault, EveryOperationSucceedsWithoutOne) {
    for (const Operation operation : operations) {
        EXPECT_EQ(perform(operation), bridge_success) << static_cast<int>(operation);
    }
}

TEST_F(Fault, EachOperationFailsWithItsStatusAsOftenAsAsked) {
    for (const Operation failing : operations) {
        faults().operations[failing] = {77, 1, 2};
        std::vector<BridgeStatus> statuses;
        for (int round = 0; round < 4; ++round) {
            if (!open_ && failing != Operation::open) {
                ASSERT_EQ(open_again(), bridge_success);
                ASSERT_EQ(bridge().set_speed(833000), bridge_success);
            }
            if (failing == Operation::read) {
                ASSERT_EQ(perform(Operation::write), bridge_success); // something to read
            }
            statuses.push_back(perform(failing));
        }
        EXPECT_EQ(statuses, (std::vector<BridgeStatus>{0, 77, 77, 0})) << static_cast<int>(failing);
        faults() = {};
        if (failing == Operation::open) {
            ASSERT_EQ(bridge().set_speed(833000), bridge_success);
        }
    }
}

TEST_F(Fault, AnOperationCanFailForGood) {
    faults().operations[Operation::check_rx_queue] = {5, 0, without_end};
    for (int round = 0; round < 100; ++round) {
        EXPECT_EQ(perform(Operation::check_rx_queue), 5);
        EXPECT_EQ(perform(Operation::flush_buffers), bridge_success);
    }
}

TEST_F(Fault, AnOperationCanBeDoneAndStillReportAFailure) {
    send(33, {0xA4, 0x3F, 0, 0, 0});
    clock_.advance(milliseconds(20));
    faults().operations[Operation::read] = {.status = 13, .done = true};
    std::array<Byte, 2> bytes{};
    const Counted read = bridge().read(bytes);
    EXPECT_EQ(read.status, 13);
    EXPECT_EQ(read.count, 2U);
    EXPECT_EQ(bytes, (std::array<Byte, 2>{0, 55}));
}

TEST_F(Fault, RepliesToOneCommandAreDamaged) {
    const auto marker = [this] {
        send(33, {0xA4, 0x3F, 0, 0, 0});
        return read(10);
    };
    const auto damaged = [&](const ReplyFault& fault) {
        faults().replies = {{33, fault}};
        return marker();
    };
    using Bytes = std::vector<Byte>;
    EXPECT_EQ(damaged({.length = 0}), Bytes{});
    EXPECT_EQ(damaged({.length = 1}), Bytes{0});
    EXPECT_EQ(damaged({.length = 9}), (Bytes{0, 55}));
    EXPECT_EQ(damaged({.replacement = 7}), (Bytes{7, 7}));
    EXPECT_EQ(damaged({.flipped_bits = 1}), (Bytes{1, 54}));
    EXPECT_EQ(damaged({.before = {9}, .behind = {8, 8}}), (Bytes{9, 0, 55, 8, 8}));
    EXPECT_EQ(damaged({.length = 0, .after = 1, .times = 2}), (Bytes{0, 55}));
    EXPECT_EQ(marker(), Bytes{});
    EXPECT_EQ(acknowledge(), Bytes{6}); // another command's
    EXPECT_EQ(marker(), Bytes{});
    EXPECT_EQ(marker(), (Bytes{0, 55}));
}

TEST_F(Fault, ALateReplyComesLate) {
    faults().replies[33] = {.late = milliseconds(150)};
    send(33, {0xA4, 0x3F, 0, 0, 0});
    EXPECT_TRUE(read(2).empty()); // within 100 ms
    EXPECT_EQ(read(2), (std::vector<Byte>{0, 55}));
}

TEST_F(Fault, UnpluggedListsNothingAndFailsEverywhere) {
    faults().unplugged = true;
    const Counted listed = bridge().count_devices();
    EXPECT_EQ(listed.status, bridge_success);
    EXPECT_EQ(listed.count, 0U);
    for (const Operation operation : operations) {
        if (operation != Operation::get_num_devices) {
            EXPECT_EQ(perform(operation), bridge_failed) << static_cast<int>(operation);
        }
    }
    // Plugged in again the old handle is dead.
    faults().unplugged = false;
    EXPECT_EQ(perform(Operation::flush_buffers), bridge_failed);
    EXPECT_EQ(bridge().open(0), bridge_success);
    EXPECT_EQ(perform(Operation::flush_buffers), bridge_success);
}

TEST_F(Fault, WithoutPowerNothingAnswersAndSettingsAreForgotten) {
    set_up(31, {0, 0, 0, 9, 0});
    set_up(29, {0, 0, 0, 0, 0});
    faults().no_power = true;
    for (const Operation operation :
         {Operation::get_num_devices, Operation::get_product_string, Operation::open,
          Operation::set_baud_rate, Operation::flush_buffers, Operation::write}) {
        EXPECT_EQ(perform(operation), bridge_success) << static_cast<int>(operation);
    }
    EXPECT_EQ(perform(Operation::read), bridge_read_timed_out);
    faults().no_power = false;
    clock_.advance(milliseconds(5000));
    EXPECT_EQ(waiting(), 0U); // the linearity calibration has not gone on
    EXPECT_EQ(simulation_.settings().resolution_ps, 1);
    EXPECT_EQ(acknowledge(), std::vector<Byte>{6});
}

TEST_F(Fault, AcknowledgesAreLostOrWrong) {
    faults().acknowledge = AcknowledgeFault::lost;
    EXPECT_TRUE(acknowledge().empty());
    EXPECT_EQ(simulation_.settings().resolution_ps, 9); // the command itself arrived
    faults().acknowledge = AcknowledgeFault::wrong;
    EXPECT_EQ(acknowledge(), std::vector<Byte>{21});
    faults().wrong_acknowledge = 0;
    EXPECT_EQ(acknowledge(), std::vector<Byte>{0});
    // Other replies are whole.
    send(33, {0xA4, 0x3F, 0, 0, 0});
    EXPECT_EQ(read(2), (std::vector<Byte>{0, 55}));
}

TEST_F(Fault, EveryNthByteIsLost) {
    faults().lose_every = 1;
    EXPECT_TRUE(acknowledge().empty());
    faults().lose_every = 4;
    set_trigger(0, 1); // the first byte
    EXPECT_EQ(waiting(), 0U);
    bench().samplers[0] = SamplerRoute::disconnected; // bytes 8, 0, 8, 0, ...
    send(32, {2, 138, 0, 0, 1});
    const auto bytes = read(1300);
    EXPECT_EQ(bytes.size(), 975U);
    EXPECT_EQ(std::vector<Byte>(bytes.begin(), bytes.begin() + 6),
              (std::vector<Byte>{8, 0, 0, 8, 0, 0})); // the third and every fourth after it missing
}

TEST_F(Fault, LosingBytesCountsFromWhenItSetsIn) {
    for (int round = 0; round < 3; ++round) {
        faults().lose_every = 2;
        EXPECT_EQ(acknowledge(), std::vector<Byte>{6});
        faults().lose_every = 0;
        EXPECT_EQ(acknowledge(), std::vector<Byte>{6});
    }
}

TEST_F(Fault, AHalfFrameDoesNotSurviveALossOfPower) {
    EXPECT_EQ(write({4, 31, 0, 0}), bridge_success);
    faults().no_power = true;
    perform(Operation::check_rx_queue);
    faults().no_power = false;
    EXPECT_EQ(write({0, 9, 0, 40}), bridge_success);
    EXPECT_TRUE(read(1).empty());
}

TEST_F(Fault, ThatComesAndGoesBetweenTwoOperationsCanBeNoticed) {
    set_up(31, {0, 0, 0, 9, 0});
    faults().no_power = true;
    simulation_.notice_faults();
    faults().no_power = false;
    EXPECT_EQ(simulation_.settings().resolution_ps, 1);
    faults().unplugged = true;
    simulation_.notice_faults();
    faults().unplugged = false;
    EXPECT_EQ(perform(Operation::flush_buffers), bridge_failed); // the device is no longer open
}

TEST_F(Fault, BitsAreFlipped) {
    faults().flipped_bits = 0x41;
    EXPECT_EQ(acknowledge(), std::vector<Byte>{6 ^ 0x41});
    send(33, {0xA4, 0x3F, 0, 0, 0});
    EXPECT_EQ(read(2), (std::vector<Byte>{0x41, 55 ^ 0x41}));
}

TEST_F(Fault, BlocksAreCutShort) {
    set_trigger(0, 1);
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{2},
                                     std::size_t{1299}, std::size_t{1300}, std::size_t{5000}}) {
        faults().block_bytes = length;
        send(32, {2, 138, 0, 0, 1});
        EXPECT_EQ(read(1300).size(), std::min<std::size_t>(length, 1300));
    }
    faults().block_bytes = 1;
    EXPECT_EQ(acknowledge(), std::vector<Byte>{6});
}

TEST_F(Fault, ExtraBytesComeFirst) {
    faults().extra_bytes = {1, 2, 3};
    EXPECT_EQ(acknowledge(), (std::vector<Byte>{1, 2, 3, 6}));
    send(33, {0xA4, 0x3F, 0, 0, 0});
    EXPECT_EQ(read(5), (std::vector<Byte>{1, 2, 3, 0, 55}));
}

TEST_F(Fault, TheTriggerIsSuppressed) {
    set_trigger(0, 1);
    EXPECT_EQ(sweep(1).size(), 650U);
    faults().no_trigger = true;
    EXPECT_EQ(sweep(1), waiting_words);
    faults().no_trigger = false;
    EXPECT_EQ(sweep(1).size(), 650U);
}

TEST_F(Fault, TheSpeedIsRefused) {
    faults().baud_rate_refused = true;
    EXPECT_EQ(bridge().set_speed(9600), bridge_failed);
    EXPECT_EQ(acknowledge(), std::vector<Byte>{6}); // still at the old one
}

TEST_F(Fault, TheListMayDifferFromWhatIsThere) {
    bridge().close();
    faults().reported_devices = 3;
    const Counted listed = bridge().count_devices();
    EXPECT_EQ(listed.status, bridge_success);
    EXPECT_EQ(listed.count, 3U);
    EXPECT_EQ(bridge().serial_number(0).status, bridge_success);
    EXPECT_EQ(bridge().serial_number(1).status, bridge_failed);
    bench().devices.clear(); // gone after it was listed
    EXPECT_EQ(bridge().open(0), bridge_failed);
}

TEST_F(Fault, PlannedFaultsSetInAtEachMomentAndEnd) {
    for (int moment = 0; moment < 12; ++moment) {
        PlannedFaults plan;
        plan.after_operations = moment;
        plan.lasting_operations = 3;
        plan.faults.operations[Operation::flush_buffers] = {bridge_failed, 0, without_end};
        bench().planned_faults = plan;
        for (int operation = 0; operation < 20; ++operation) {
            const bool hit = operation >= moment && operation < moment + 3;
            EXPECT_EQ(perform(Operation::flush_buffers), hit ? bridge_failed : bridge_success)
                << moment << ' ' << operation;
        }
        EXPECT_FALSE(bench().planned_faults);
    }
}

TEST_F(Fault, PlannedFaultsMayLast) {
    PlannedFaults plan;
    plan.after_operations = 2;
    plan.faults.unplugged = true;
    bench().planned_faults = plan;
    EXPECT_EQ(perform(Operation::flush_buffers), bridge_success);
    EXPECT_EQ(perform(Operation::flush_buffers), bridge_success);
    for (int operation = 0; operation < 50; ++operation) {
        EXPECT_EQ(perform(Operation::flush_buffers), bridge_failed);
    }
}

} // namespace
} // namespace kv408::simulator
