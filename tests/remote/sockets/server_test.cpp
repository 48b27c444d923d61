// The server with clients behind real sockets.

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <random>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>

#include "remote/common_commands.h"
#include "remote/server.h"
#include "remote/setting_commands.h"
#include "support/socket_line.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

using Line = SocketLine;

// A program with one thread that serves.
class Servers : public testing::Test {
public:
    ~Servers() override {
        {
            const std::lock_guard lock(mutex);
            ended = true;
        }
        woken.notify_one();
        program.join();
    }

protected:
    Servers() {
        table.add(common_commands(table));
        table.add({boolean_setting(
                       "DISPlay:GRID", [this](const Call&, bool on) { grid = on; },
                       [this](const Call&) { return grid.load(); }),
                   {"BIG",
                    {},
                    {},
                    [this](const Call&) {
                        ++big;
                        return std::string(300000, 'x');
                    }},
                   {"BUSY",
                    [this](const Call&) {
                        busy = true;
                        static_cast<void>(Line::comes([this] { return !busy; }));
                    }},
                   {"SLOW", [this](const Call&) {
                        std::this_thread::sleep_for(1ms);
                        ++slow;
                    }}});
        program = std::thread([this] { run(); });
    }

    void wake() {
        {
            const std::lock_guard lock(mutex);
            wanted = true;
        }
        woken.notify_one();
    }

    void run() {
        std::unique_lock lock(mutex);
        while (!ended) {
            woken.wait_for(lock, 10ms, [this] { return wanted || ended; });
            wanted = false;
            lock.unlock();
            slow = 0;
            const bool more = server.serve(2ms);
            most_slow = std::max(most_slow.load(), slow);
            lock.lock();
            wanted = wanted || more;
            seen = server.clients().size();
        }
    }

    void wait_for_clients(std::size_t count) const {
        EXPECT_TRUE(Line::comes([&] { return seen == count; })) << seen << " and not " << count;
    }

    std::atomic<bool> grid = false;
    std::atomic<bool> pending = false;
    std::atomic<bool> busy = false; ///< the program is, until this is set to false
    std::atomic<int> big = 0;       ///< how many big answers have been made
    int slow = 0;                   ///< how many slow commands the server has run at a time
    std::atomic<int> most_slow = 0; ///< the most
    std::atomic<std::size_t> seen = 0;
    CommandTable table;
    std::mutex mutex;
    std::condition_variable woken;
    bool wanted = false;
    bool ended = false;
    Server server{table,
                  {"127.0.0.1", 0},
                  [this] { wake(); },
                  [this](const Client&) {
                      const auto now = std::chrono::steady_clock::now().time_since_epoch();
                      return Client::Moment{std::chrono::duration<double>(now).count(), pending};
                  }};
    std::thread program;
};

TEST_F(Servers, AnswerEachInOnePiece) {
    const Line one(server.port());
    const Line other(server.port());
    EXPECT_EQ(one.ask("SYST:VERS?"), "1999.0\n");
    EXPECT_EQ(other.ask("DISP:GRID ON;GRID?;:SYST:VERS?"), "1;1999.0\n");
    one.say("FOO;GRID?\n"); // not answered
    EXPECT_EQ(one.ask("SYST:ERR?"), "-113,\"Undefined header\"\n");
    EXPECT_EQ(other.ask("SYST:ERR?"), "0,\"No error\"\n");
}

TEST_F(Servers, RunWhatAClientSaidBeforeItWentAway) {
    {
        const Line line(server.port());
        line.say("DISP:GRID ON\n");
    }
    EXPECT_TRUE(Line::comes([this] { return grid.load(); }));
    wait_for_clients(0);
    const Line line(server.port());
    line.say("SYST:VERS?\nDISP:GRID?\n");
    line.say_no_more();
    std::string heard;
    for (std::string piece = line.hear(); !piece.empty(); piece = line.hear()) {
        heard += piece;
    }
    EXPECT_EQ(heard, "1999.0\n1\n");
}

TEST_F(Servers, TakeEightAndTurnTheNextAway) {
    std::array<std::unique_ptr<Line>, 8> lines;
    for (auto& line : lines) {
        line = std::make_unique<Line>(server.port());
        EXPECT_EQ(line->ask("SYST:VERS?"), "1999.0\n");
    }
    const Line ninth(server.port());
    EXPECT_EQ(ninth.ask("SYST:VERS?"), "");
    lines[3].reset();
    wait_for_clients(7);
    EXPECT_EQ(Line(server.port()).ask("SYST:VERS?"), "1999.0\n");
    EXPECT_EQ(lines[7]->ask("SYST:VERS?"), "1999.0\n");
}

// A script that ends and the next one, which begins at once, while the program has no time.
TEST_F(Servers, TakeWhoComesInThePlaceOfOneThatHasGone) {
    std::array<std::unique_ptr<Line>, 8> lines;
    for (auto& line : lines) {
        line = std::make_unique<Line>(server.port());
        EXPECT_EQ(line->ask("SYST:VERS?"), "1999.0\n");
    }
    for (const bool says_something : {false, true}) {
        lines[0]->say("BUSY\n");
        ASSERT_TRUE(Line::comes([this] { return busy.load(); }));
        if (says_something) {
            lines[3]->say("DISP:GRID ON\n");
        }
        lines[3].reset();
        lines[3] = std::make_unique<Line>(server.port());
        lines[3]->say("SYST:VERS?\n");
        EXPECT_EQ(lines[3]->hear(100ms), "(nothing)") << "it waits";
        busy = false;
        EXPECT_EQ(lines[3]->hear(), "1999.0\n");
        EXPECT_EQ(Line(server.port()).ask("SYST:VERS?"), "") << "now there are eight";
    }
    EXPECT_TRUE(grid) << "what it had said before it went is run";
}

TEST_F(Servers, WhoIsHeldBackHoldsNobodyElseBack) {
    const Line waiting(server.port());
    const Line other(server.port());
    pending = true;
    waiting.say("*OPC?\n");
    EXPECT_EQ(other.ask("SYST:VERS?"), "1999.0\n");
    EXPECT_EQ(waiting.hear(100ms), "(nothing)");
    pending = false;
    EXPECT_EQ(waiting.hear(), "1\n");
}

TEST_F(Servers, WhoHasGoneIsNotWaitedFor) {
    const Line other(server.port());
    pending = true;
    for (const char* const behind : {"", "DISP:GRID ON\n*IDN?\n"}) {
        const Line waiting(server.port());
        waiting.say(std::string("ACQ:TIM 3600;*OPC?\n") + behind);
        EXPECT_EQ(other.ask("SYST:VERS?"), "1999.0\n");
        wait_for_clients(2);
        waiting.end_by_reset();
        waiting.say_no_more();
        EXPECT_EQ(waiting.hear(100ms), "(nothing)") << "it may still read";
    }
    wait_for_clients(1);
}

TEST_F(Servers, WhoSaysNoMoreIsAnsweredAndKeepsNobodyOut) {
    pending = true;
    std::array<std::unique_ptr<Line>, 8> lines;
    for (auto& line : lines) {
        line = std::make_unique<Line>(server.port());
        line->say("ACQ:TIM 3600;*OPC?\nSYST:VERS?\n");
        line->say_no_more();
    }
    // As soon as the server has seen that they say no more.
    EXPECT_TRUE(
        Line::comes([this] { return Line(server.port()).ask("SYST:VERS?") == "1999.0\n"; }));
    EXPECT_EQ(lines[0]->hear(), "") << "the oldest gives its place";
    pending = false;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        std::string heard;
        for (std::string piece = lines[i]->hear(); !piece.empty(); piece = lines[i]->hear()) {
            heard += piece;
        }
        EXPECT_EQ(heard, "1\n1999.0\n");
    }
    wait_for_clients(0);
}

TEST_F(Servers, WhoNeverReadsHoldsNobodyUp) {
    std::array<std::unique_ptr<Line>, 8> mute;
    std::string questions;
    for (int i = 0; i < 1000; ++i) {
        questions += "BIG?\n";
    }
    for (auto& line : mute) {
        line = std::make_unique<Line>(server.port());
        line->say(questions); // 300 MB of answers, if they were made
    }
    wait_for_clients(8);
    mute[3].reset();
    wait_for_clients(7);
    const Line other(server.port());
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(other.ask("SYST:VERS?"), "1999.0\n");
    }
    EXPECT_LT(big, 4000) << "beyond what the system itself takes none is made";
}

TEST_F(Servers, HalfOpenAndBrokenConnectionsGiveTheirPlacesBack) {
    for (int round = 0; round < 50; ++round) {
        // Who comes before the server has noticed the ends would be a ninth.
        wait_for_clients(0);
        const Line still_reads(server.port());
        still_reads.say("SYST:VERS?\nBIG?\n");
        still_reads.say_no_more();
        EXPECT_EQ(still_reads.hear().substr(0, 7), "1999.0\n");
        const Line lost(server.port());
        lost.say("BIG?\nBIG?\nSYST:VERS?\n*OPC?;BI");
        lost.end_by_reset();
        const Line lost_unread(server.port());
        lost_unread.end_by_reset();
    }
    wait_for_clients(0);
    EXPECT_EQ(Line(server.port()).ask("SYST:VERS?"), "1999.0\n");
}

// In seconds, when the system asks whether the other computer is there, as it tells it of the
// connection that `port` of this one has.
double next_question(std::uint16_t port) {
    std::array<char, 16> end{};
    std::snprintf(end.data(), end.size(), ":%04X", port);
    std::ifstream connections("/proc/net/tcp");
    for (std::string text; std::getline(connections, text);) {
        std::istringstream line(text);
        std::string number;
        std::string here;
        std::string there;
        std::string state;
        std::string queues;
        std::string timer;
        line >> number >> here >> there >> state >> queues >> timer;
        if (here.ends_with(end.data()) && state == "01" && timer.starts_with("02:")) {
            return static_cast<double>(std::stol(timer.substr(3), nullptr, 16)) / 100;
        }
    }
    return -1;
}

TEST_F(Servers, SoonAskWhetherASilentClientIsStillThere) {
    const Line silent(server.port());
    EXPECT_EQ(silent.ask("*ESE?"), "0\n");
    EXPECT_TRUE(Line::comes([this] {
        const double seconds = next_question(server.port());
        return seconds > 0 && seconds <= 30;
    })) << next_question(server.port());
}

TEST_F(Servers, BinaryRubbishDoesNoHarm) {
    std::mt19937 random(1);
    const Line other(server.port());
    for (int round = 0; round < 20; ++round) {
        std::string rubbish(100'000, '\0');
        for (char& byte : rubbish) {
            byte = static_cast<char>(random() & 0xFFU);
        }
        const Line line(server.port());
        line.say(rubbish);
        EXPECT_EQ(other.ask("SYST:VERS?"), "1999.0\n");
        // A block may have been begun that is as long as the line may be.
        line.say(std::string(100'000, '\n') + "SYST:ERR:COUN?\n");
    }
    wait_for_clients(1);
    EXPECT_EQ(other.ask("SYST:ERR:COUN?"), "0\n");
}

TEST_F(Servers, ALineWithoutAnEndTakesNoMemory) {
    const Line endless(server.port());
    const std::string much(1 << 20, 'x');
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(endless.say(much));
    }
    EXPECT_EQ(endless.ask("\nSYST:ERR?"), "-363,\"Input buffer overrun\"\n");
}

TEST_F(Servers, LeaveTheProgramItsTime) {
    const Line line(server.port());
    std::string many;
    for (int i = 0; i < 300; ++i) {
        many += "SLOW;";
    }
    EXPECT_EQ(line.ask(many + "SYST:VERS?"), "1999.0\n");
    EXPECT_LE(most_slow, 2); // each takes at least 1 ms of the 2 ms
}

TEST_F(Servers, HangUpOnWebPages) {
    const Line page(server.port());
    EXPECT_EQ(page.ask("POST / HTTP/1.1\r\nHost: localhost:5025\r\n\r\nDISP:GRID ON"), "");
    EXPECT_FALSE(grid);
}

TEST_F(Servers, SurviveTenThousandConnections) {
    for (int i = 0; i < 10000; ++i) {
        ASSERT_TRUE(Line(server.port()).connected()) << i;
    }
    // Those before may not all have been seen to go.
    EXPECT_TRUE(
        Line::comes([this] { return Line(server.port()).ask("SYST:VERS?") == "1999.0\n"; }));
}

TEST_F(Servers, SayWhereNobodyCanBeListenedFor) {
    const auto listen = [this](const Network::Place& place) {
        const Server second(table, place, [] {}, {});
    };
    EXPECT_THROW(listen({"127.0.0.1", server.port()}), std::system_error);
    EXPECT_THROW(listen({"198.51.100.1", 0}), std::system_error); // not this machine's
    EXPECT_THROW(listen({"nonsense", 0}), std::system_error);
}

} // namespace
} // namespace kv408
