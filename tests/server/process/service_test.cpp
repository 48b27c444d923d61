// The service with clients, while its instrument comes and goes.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/system_clock.h"
#include "server/service.h"
#include "server/stb_picture_coder.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/shell.h"
#include "support/socket_line.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using testing::HasSubstr;

/// A cable that another thread may pull.
class PulledBridge : public Bridge {
public:
    explicit PulledBridge(Bridge& bridge) : bridge_(bridge) {}

    std::atomic<bool> pulled = false;
    std::atomic<bool> switched_off = false; ///< the cable is there, and nobody at its end

    Counted count_devices() override {
        return pulled ? Counted{bridge_success, 0} : bridge_.count_devices();
    }
    SerialNumber serial_number(std::uint32_t index) override {
        return bridge_.serial_number(index);
    }
    BridgeStatus open(std::uint32_t index) override {
        return pulled ? bridge_failed : bridge_.open(index);
    }
    BridgeStatus close() override { return bridge_.close(); }
    BridgeStatus set_speed(std::uint32_t baud) override { return bridge_.set_speed(baud); }
    BridgeStatus set_time_out(std::uint32_t ms) override { return bridge_.set_time_out(ms); }
    BridgeStatus flush() override { return pulled ? bridge_failed : bridge_.flush(); }
    BridgeStatus write(std::span<const Byte> bytes) override {
        return pulled ? bridge_failed : switched_off ? bridge_success : bridge_.write(bytes);
    }
    Counted read(std::span<Byte> bytes) override {
        return nothing_comes() ? nothing() : bridge_.read(bytes);
    }
    Counted waiting() override { return nothing_comes() ? nothing() : bridge_.waiting(); }

private:
    [[nodiscard]] bool nothing_comes() const { return pulled || switched_off; }
    [[nodiscard]] Counted nothing() const { return {pulled ? bridge_failed : bridge_success, 0}; }

    Bridge& bridge_;
};

/// The system's clock, which can be stopped: then nothing that waits until a time goes on.
class StoppedClock : public SystemClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        const std::int64_t stopped = stopped_;
        return stopped == 0 ? SystemClock::now() : std::chrono::nanoseconds(stopped);
    }
    void stop() { stopped_ = SystemClock::now().count(); }

private:
    std::atomic<std::int64_t> stopped_ = 0;
};

class Services : public testing::Test {
protected:
    void start() {
        service = std::make_unique<Service>(Service::Host{.clock = clock,
                                                          .bridge = bridge,
                                                          .files = files,
                                                          .places = fake_places(),
                                                          .coder = coder,
                                                          .log = log},
                                            Network::Place{"127.0.0.1", 0});
        running = std::thread([this] { service->run(); });
    }
    std::string end() {
        service->ask_end();
        running.join();
        service.reset();
        return log.str();
    }

    /// Asks `line` again and again until it answers `wanted`.
    static bool comes(const SocketLine& line, const std::string& question,
                      const std::string& wanted) {
        return SocketLine::comes([&] { return line.ask(question) == wanted; });
    }

    /// The client's errors, oldest first, each with its line's end.
    static std::string errors_of(const SocketLine& line) {
        std::string errors;
        for (std::string error = line.ask("SYST:ERR?"); error != "0,\"No error\"\n";
             error = line.ask("SYST:ERR?")) {
            errors += error;
        }
        return errors;
    }

    StoppedClock clock;
    simulator::Simulation simulation{clock};
    PulledBridge bridge{simulation.bridge()};
    FakeFiles files;
    StbPictureCoder coder;
    std::ostringstream log;
    std::unique_ptr<Service> service;
    std::thread running;
};

TEST_F(Services, FindTheInstrumentAgainWithTheSameSetUp) {
    start();
    const SocketLine line(service->port());
    ASSERT_TRUE(
        comes(line, "*IDN?", std::string("Tarvo,Kv408,lm4rxa-SIM00001,") + KV408_VERSION + "\n"));
    line.say("ACQ:TIM 60;:CHAN2:SCAL 20MV;POS 1;:TRIG:TIM 4321;LEV 20MV;:ACQ:SPE ON;:TIM:SCAL "
             "5NS;:TIM:DEL:ADD "
             "1NS\n");
    EXPECT_EQ(line.ask("*OPC?"), "1\n");
    EXPECT_EQ(line.ask("SYST:ERR?"), "0,\"No error\"\n");
    const std::string questions = "CHAN2:SCAL?;POS?;:TRIG:TIM?;LEV?;:ACQ:SPE?;:TIM:SCAL?;DEL:ADD?";
    const std::string set_up = line.ask(questions);
    const long sweeps = std::stol(line.ask("ACQ:COUN?"));
    bridge.pulled = true;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "512\n"));
    EXPECT_THAT(errors_of(line), HasSubstr("-240,\"Hardware error;The instrument is lost\""));
    bridge.pulled = false;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "0\n"));
    EXPECT_EQ(line.ask(questions), set_up);
    EXPECT_EQ(line.ask("*OPC?"), "1\n");
    EXPECT_GT(std::stol(line.ask("ACQ:COUN?")), sweeps);
    const std::string told = end();
    EXPECT_THAT(told, HasSubstr("connected (1 of 8)\n"));
    EXPECT_THAT(told, HasSubstr("Instrument lm4rxa-SIM00001 found\n"));
    EXPECT_THAT(told, HasSubstr("Instrument lost\n"));
    EXPECT_THAT(told, testing::EndsWith("Ended\n"));
    EXPECT_THAT(files.files["/settings/kv408/ConfigsLM4RX.TXT"], HasSubstr("ch2vdiv\t 4"));
}

TEST_F(Services, DoNotCarryOnWithWhatAutosetTried) {
    start();
    const SocketLine line(service->port());
    ASSERT_TRUE(
        comes(line, "*IDN?", std::string("Tarvo,Kv408,lm4rxa-SIM00001,") + KV408_VERSION + "\n"));
    line.say("ACQ:TIM 60;:CHAN2:SCAL 20MV;:TRIG:LEV 20MV;:TIM:SCAL 5NS;DEL:ADD 1NS\n");
    EXPECT_EQ(line.ask("*OPC?"), "1\n");
    const std::string questions = "CHAN2:SCAL?;:TRIG:LEV?;:TIM:SCAL?;DEL:ADD?";
    const std::string set_up = line.ask(questions);
    line.say("AUT\n");
    ASSERT_TRUE(SocketLine::comes([&] { return line.ask(questions) != set_up; }));
    bridge.pulled = true;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "512\n"));
    bridge.pulled = false;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "0\n"));
    EXPECT_EQ(line.ask(questions), set_up);
    end();
    EXPECT_THAT(files.files["/settings/kv408/ConfigsLM4RX.TXT"], HasSubstr("ch2vdiv\t 4"));
}

/// The queries of all that clients set in the tools, of the program's own list of headers.
std::vector<std::string> tool_queries(const SocketLine& line) {
    std::istringstream headers(line.ask("SYST:HELP:HEAD?"));
    std::vector<std::string> queries;
    for (std::string header; std::getline(headers, header);) {
        const auto tool = header.substr(0, header.find_first_of(":<"));
        const bool is_tool =
            std::string(" DENSity HISTogram JITTer EYE MASK MATH SPECtrum STATistics ")
                .find(' ' + tool + ' ') != std::string::npos;
        const bool only_acts = header.ends_with(":CLEar") || header.ends_with(":RESet") ||
                               header.ends_with(":REFerence");
        if (!is_tool || only_acts || header.ends_with('?')) {
            continue;
        }
        const auto suffix = header.find("<n>");
        for (const char* const number : {"1", "2"}) {
            if (suffix != std::string::npos) {
                queries.push_back(std::string(header).replace(suffix, 3, number) + '?');
            }
        }
        if (suffix == std::string::npos) {
            queries.push_back(header + '?');
        }
    }
    return queries;
}

/// The answers to `queries`, each behind its query.
std::map<std::string, std::string> answers_to(const std::vector<std::string>& queries,
                                              const SocketLine& line) {
    std::map<std::string, std::string> answers;
    for (const std::string& query : queries) {
        answers[query] = line.ask(query);
    }
    return answers;
}

// A measurement that runs for days goes on as it was begun.
TEST_F(Services, FindTheInstrumentAgainWithTheSameTools) {
    start();
    const SocketLine line(service->port());
    ASSERT_TRUE(
        comes(line, "*IDN?", std::string("Tarvo,Kv408,lm4rxa-SIM00001,") + KV408_VERSION + "\n"));
    const std::vector<std::string> queries = tool_queries(line);
    EXPECT_GT(queries.size(), 50U);
    const auto at_first = answers_to(queries, line);
    line.say("DENS:CHAN1 OFF;CHAN2 OFF;FRE ON;HALF 77;PAL CHAN\n"
             "HIST:STAT ON;SOUR CHAN2;OF TIM;WIND 10,20,30,40\n"
             "JITT:STAT ON;SOUR CHAN2;EDGE FALL;NUMB 3;LEV 0.25;INST 2PS;INT 8NS\n"
             "EYE:STAT ON;SOUR CHAN2;INT 80NS;CROS 82NS\n"
             "MASK:STAT ON;SOUR CHAN2;NAME STM1;RAT 0.001;ACT BEEP\n"
             "MATH1:FUNC DIFF;SOUR:FIRS CHAN2;:MATH1:COUN 7;SCAL 2E9;POS -1.5\n"
             "MATH2:FUNC AVER;SOUR:FIRS CHAN2;SEC CHAN1;:MATH1:SOUR:SEC CHAN1\n"
             "MATH2:COUN 9;SCAL 0.3;POS 2\n"
             "SPEC:STAT ON;SOUR MATH1;WIND FLAT;UNIT DBM;AXIS LOG;HOLD PEAK;COUN 5\n"
             "STAT:SOUR CHAN1;VAL VPP;LOW 0.125\n"
             "STAT:STAT ON;SOUR CHAN2;VAL FREQ;LOW 1E6;HIGH 2E6;COL VIOL;ACT BEEP\n");
    ASSERT_EQ(line.ask("SYST:ERR?"), "0,\"No error\"\n");
    const auto set = answers_to(queries, line);
    for (const auto& [query, answer] : set) {
        EXPECT_NE(answer, at_first.at(query)) << query << ": set it here, so that it is tried";
    }
    bridge.pulled = true;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "512\n"));
    bridge.pulled = false;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "0\n"));
    EXPECT_EQ(answers_to(queries, line), set);
    EXPECT_EQ(line.ask("STAT:SOUR CHAN1;VAL VPP;LOW?"), "1.250000E-01\n") << "of another value";
    end();
}

TEST_F(Services, WaitForAnInstrumentAndEndMeanwhile) {
    bridge.pulled = true;
    start();
    const SocketLine line(service->port());
    EXPECT_EQ(line.ask("CHAN1:SCAL 0.1;:SYST:VERS?"), "1999.0\n");
    EXPECT_EQ(line.ask("SYST:ERR?"), "-240,\"Hardware error;No instrument\"\n");
    clock.stop(); // the time at which it would look for the instrument again never comes
    end();
    EXPECT_TRUE(files.files.empty()); // nothing was known that could be kept
}

TEST_F(Services, StayStoppedOverALoss) {
    start();
    const SocketLine line(service->port());
    ASSERT_TRUE(comes(line, "STOP;:ACQ:STAT?", "STOP\n"));
    bridge.pulled = true;
    line.say("TRIG:SOUR TRIG2\n"); // a frame that cannot be written
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "512\n"));
    bridge.pulled = false;
    ASSERT_TRUE(comes(line, "STAT:QUES:COND?", "0\n"));
    EXPECT_EQ(line.ask("ACQ:STAT?;:TRIG:SOUR?"), "STOP;TRIG2\n");
    end();
}

/// How often `text` stands in `all`.
std::size_t count_of(const std::string& text, const std::string& all) {
    std::size_t count = 0;
    for (auto at = all.find(text); at != std::string::npos; at = all.find(text, at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(Services, TellAFailureToTheClientThatCausedItEachTime) {
    start();
    const SocketLine one(service->port());
    const SocketLine other(service->port());
    ASSERT_TRUE(comes(one, "ACQ:STAT?", "RUN\n"));
    bridge.switched_off = true;
    ASSERT_TRUE(comes(one, "STAT:QUES:COND?", "512\n"));
    one.say("*CLS\n");
    other.say("*CLS\n");
    const std::string failure = "-240,\"Hardware error;Error Sending Data.\"\n";
    for (const char* const position : {"0.3", "0.4", "0.5"}) {
        one.say(std::string("CHAN1:POS ") + position + '\n');
        std::string errors;
        EXPECT_TRUE(SocketLine::comes([&] {
            errors += errors_of(one);
            return errors.find(failure) != std::string::npos;
        })) << position;
        EXPECT_EQ(errors_of(other), "");
    }
    other.say("CHAN1:POS 0.6\n");
    std::string errors;
    EXPECT_TRUE(SocketLine::comes([&] {
        errors += errors_of(other);
        return errors.find(failure) != std::string::npos;
    }));
    const std::string told = end();
    EXPECT_EQ(count_of("Error Sending Data.\n", told), 1U) << told;
}

TEST_F(Services, TellThatNoDataCome) {
    start();
    const SocketLine one(service->port());
    const SocketLine other(service->port());
    ASSERT_TRUE(comes(one, "ACQ:STAT?", "RUN\n"));
    EXPECT_EQ(other.ask("SYST:ERR?"), "0,\"No error\"\n");
    for (int time = 0; time < 2; ++time) {
        bridge.switched_off = true;
        ASSERT_TRUE(comes(one, "STAT:QUES:COND?", "512\n"));
        ASSERT_TRUE(comes(one, "SYST:ERR:COUN?", "1\n"));
        bridge.switched_off = false;
        ASSERT_TRUE(comes(one, "STAT:QUES:COND?", "0\n"));
        for (const SocketLine* const line : {&one, &other}) {
            EXPECT_EQ(errors_of(*line), "-240,\"Hardware error;No data from the instrument\"\n");
        }
    }
    const std::string told = end();
    EXPECT_EQ(count_of("No data from the instrument\n", told), 2U) << told;
    EXPECT_EQ(count_of("Data from the instrument again\n", told), 2U) << told;
}

// What another program reads of the picture's PNG, row by row.
std::string read_back(const Surface& picture) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "picture.png";
    std::ofstream(file, std::ios::binary) << StbPictureCoder().png(picture);
    return run_in_shell("/usr/bin/python3 " KV408_SOURCE_ROOT "/tests/server/process/pictures.py " +
                        file.string() + " 2>&1")
        .output;
}

TEST(Pictures, AreEncodedWithoutAWindow) {
    Surface picture(3, 2);
    picture.row(0)[0] = pixel_of(rgb(255, 1, 2));
    picture.row(1)[2] = pixel_of(rgb(3, 254, 5));
    EXPECT_EQ(read_back(picture), "ff0102000000000000 00000000000003fe05\n");
}

TEST(Pictures, KeepAnyNumberOfColours) {
    for (const int colours : {255, 256, 257, 1000}) {
        Surface picture(colours, 2);
        std::string rows;
        for (int x = 0; x < colours; ++x) {
            picture.row(0)[static_cast<std::size_t>(x)] =
                pixel_of(rgb(static_cast<std::uint8_t>(x / 256), static_cast<std::uint8_t>(x), 7));
            std::array<char, 7> text{};
            std::snprintf(text.data(), text.size(), "%02x%02x07", x / 256, x % 256);
            rows += text.data();
        }
        std::fill(picture.row(1).begin(), picture.row(1).end(), picture.at(colours - 1, 0));
        const std::string last = rows.substr(rows.size() - 6);
        rows += ' ';
        for (int x = 0; x < colours; ++x) {
            rows += last;
        }
        EXPECT_EQ(read_back(picture), rows + '\n') << colours;
    }
}

} // namespace
} // namespace kv408
