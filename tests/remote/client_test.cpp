// A client and what it is answered, with a small command tree of its own.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "remote/client.h"
#include "remote/common_commands.h"
#include "remote/setting_commands.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> slopes = {"POSitive", "NEGative"};

// "abc" in three parts.
class Letters : public LongAnswer {
public:
    std::string next() override {
        std::string part = rest_.substr(0, 1);
        rest_.erase(0, 1);
        return part;
    }

private:
    std::string rest_ = "abc";
};

class Clients : public testing::Test {
protected:
    Clients() {
        table.add(common_commands(table));
        table.add({
            real_setting("TIMebase:SCALe",
                         {{25e-12, 100e-6, 1e-9, Quantity::seconds},
                          [this](const Call&, double seconds) { scale = seconds; },
                          [this](const Call&) { return scale; }}),
            whole_setting(
                "TIMebase:DELay<n>",
                {{0, 65535, 0},
                 [this](const Call& call, double value) { delay.at(index(call)) = value; },
                 [this](const Call& call) { return delay.at(index(call)); }}),
            boolean_setting(
                "DISPlay:GRID", [this](const Call&, bool on) { grid = on; },
                [this](const Call&) { return grid; }),
            choice_setting(
                "TRIGger:SLOPe", slopes, [this](const Call&, std::size_t which) { slope = which; },
                [this](const Call&) { return slope; }),
            query_command("LONG", [](const Call&) { return std::string(1 << 20, 'x'); }),
            query_command("PARTS",
                          [](const Call& call) {
                              call.client.answer_in_parts(std::make_unique<Letters>());
                              return std::string();
                          }),
            {"FAIL",
             [](const Call&) {
                 throw Refused{ScpiError::hardware_error, "No \"ack\"\nhere"};
             }},
        });
    }

    static std::size_t index(const Call& call) {
        return static_cast<std::size_t>(call.suffixes.front()) - 1;
    }

    // Sends `line` and runs all that runs now; what was answered.
    std::string ask(const std::string& line) {
        EXPECT_EQ(client.take(line + '\n'), line.size() + 1);
        return go_on();
    }

    std::string go_on() {
        std::string replies;
        for (int steps = 0; steps < 1000 && client.busy() && client.can_run(moment); ++steps) {
            replies += client.run(moment);
        }
        return replies;
    }

    CommandTable table;
    Client client{table};
    Client::Moment moment{100.0};
    double scale = 1e-9;
    std::array<double, 2> delay{};
    bool grid = false;
    std::size_t slope = 0;
};

TEST_F(Clients, AreGivenALongLineOfAnswersPartByPart) {
    constexpr std::size_t one = std::size_t{1} << 20;
    std::string line = "LONG?";
    for (int more = 0; more < 6; ++more) {
        line += ";LONG?";
    }
    line += ";:DISPlay:GRID 1;GRID?\n";
    EXPECT_EQ(client.take(line), line.size());
    std::string reply;
    while (client.busy()) {
        const std::string part = client.run(moment);
        EXPECT_LE(part.size(), one + 1) << "an answer leaves before the next is made";
        reply += part;
    }
    const std::string answer(one, 'x');
    EXPECT_EQ(reply, answer + ';' + answer + ';' + answer + ';' + answer + ';' + answer + ';' +
                         answer + ';' + answer + ";1\n");
    EXPECT_EQ(ask("SYST:ERR?"), "0,\"No error\"\n");
}

TEST_F(Clients, AreGivenAnAnswerThatIsMadePartByPart) {
    EXPECT_EQ(ask("*ESE?;PARTS?;*ESE?;PARTS?"), "0;abc;0;abc\n");
    EXPECT_EQ(ask("PARTS?;FOO"), "abc\n");
    EXPECT_EQ(ask("SYST:ERR?"), "-113,\"Undefined header\"\n");
    EXPECT_EQ(ask("PARTS?"), "abc\n");
}

TEST_F(Clients, SetAndAreAnsweredInOneLine) {
    EXPECT_EQ(ask("TIM:SCAL 20NS"), "");
    EXPECT_EQ(ask("TIM:SCAL?;:DISP:GRID ON;GRID?;:TRIG:SLOP NEG;SLOPE?\r"), "2.000000E-08;1;NEG\n");
    EXPECT_EQ(ask("timebase:delay2 7;DEL?;DEL2?;*ESE?;DEL2?"), "0;7;0;7\n");
    EXPECT_EQ(ask("TIM:SCAL? MIN;SCAL? MAX;SCAL? DEF"), "2.500000E-11;1.000000E-04;1.000000E-09\n");
    EXPECT_EQ(ask("SYST:ERR?;VERS?"), "0,\"No error\";1999.0\n");
}

TEST_F(Clients, TheRestOfALineThatIsNotUnderstoodIsNotRun) {
    EXPECT_EQ(ask("TIM:SCAL?;FOO 1;SCAL 20NS"), "1.000000E-09\n");
    EXPECT_EQ(scale, 1e-9);
    EXPECT_EQ(ask("SYST:ERR?"), "-113,\"Undefined header\"\n");
    // What was understood and cannot be done keeps nothing back.
    EXPECT_EQ(ask("TIM:SCAL 1S;DEL 5;:FAIL;TIM:DEL?"), "5\n");
    EXPECT_EQ(ask("SYST:ERR:COUN?"), "2\n");
    EXPECT_EQ(ask("SYST:ERR?;ERR?;ERR?"), "-222,\"Data out of range\";"
                                          "-240,\"Hardware error;No \"\"ack\"\" here\";"
                                          "0,\"No error\"\n");
}

TEST_F(Clients, EachMistakeHasItsNumber) {
    const auto error = [this](const std::string& line) {
        EXPECT_EQ(ask(line), "") << line;
        const std::string reply = ask("SYST:ERR?");
        return reply.substr(0, reply.find(','));
    };
    EXPECT_EQ(error("TIM:DEL3 1"), "-114");
    EXPECT_EQ(error("TIM:SCAL"), "-109");
    EXPECT_EQ(error("TIM:SCAL 1NS,2NS"), "-108");
    EXPECT_EQ(error("TIM:SCAL? MIN,MAX"), "-108");
    EXPECT_EQ(error("TIM:SCAL ON"), "-104");
    EXPECT_EQ(error("TIM:SCAL? 1"), "-104");
    EXPECT_EQ(error("TIM:SCAL? SOME"), "-224");
    EXPECT_EQ(error("TRIG:SLOP UP"), "-224");
    EXPECT_EQ(error("TIM:SCAL 1NV"), "-131");
    EXPECT_EQ(error("FAIL?"), "-113");
    EXPECT_EQ(error("SYST:VERS 1"), "-113");
    EXPECT_EQ(error("*CLS 1"), "-108");
    EXPECT_EQ(error(std::string(70000, 'x')), "-363");
}

TEST_F(Clients, TwentyErrorsWaitThenTheQueueOverflows) {
    for (int i = 0; i < 25; ++i) {
        ask("FOO");
    }
    EXPECT_EQ(ask("SYST:ERR:COUN?"), "20\n");
    for (int i = 0; i < 19; ++i) {
        EXPECT_EQ(ask("SYST:ERR?"), "-113,\"Undefined header\"\n");
    }
    EXPECT_EQ(ask("SYST:ERR:NEXT?"), "-350,\"Queue overflow\"\n");
    EXPECT_EQ(ask("SYST:ERR?"), "0,\"No error\"\n");
}

TEST_F(Clients, ReadTheirStatus) {
    EXPECT_EQ(ask("*STB?"), "0\n");
    EXPECT_EQ(ask("*ESR?;*ESR?"), "128;0\n"); // power on
    ask("FOO");
    EXPECT_EQ(ask("*ESE 32;*SRE 255;*SRE?;*STB?"), "191;116\n"); // 4 + 16 + 32 + 64
    EXPECT_EQ(ask("*ESR?;*ESR?"), "32;0\n");
    ask("TIM:SCAL 1S");
    EXPECT_EQ(ask("*ESR?"), "16\n");
    client.status.operation.set_condition(8);
    EXPECT_EQ(ask("STAT:OPER:COND?;:STAT:OPER:ENAB 65535;ENAB?"), "8;32767\n");
    EXPECT_EQ(ask("*CLS;*STB?"), "0\n");
    client.status.operation.set_condition(8 | 32);
    EXPECT_EQ(ask("*STB?"), "192\n"); // 64 + 128
    client.status.operation.set_condition(0);
    EXPECT_EQ(ask("STAT:OPER?;OPER:EVEN?;COND?"), "32;0;0\n");
    client.status.questionable.set_condition(512);
    EXPECT_EQ(ask("STAT:QUES:ENAB #H200;:*STB?"), "");
    EXPECT_EQ(ask("SYST:ERR?"), "-101,\"Invalid character\"\n"); // no colon before a star
    EXPECT_EQ(ask("*STB?;STAT:PRES;*STB?"), "104;112\n");        // 8 + 32 + 64, then 16 + 32 + 64
}

TEST_F(Clients, AreHeldBackWhileSomethingIsPending) {
    moment.pending = true;
    EXPECT_EQ(ask("DISP:GRID?;*OPC?;GRID ON;GRID?"), "");
    EXPECT_FALSE(grid);
    EXPECT_EQ(client.take("*IDN?\n"), 0U); // the line comes first
    moment.seconds += 9.9;
    EXPECT_EQ(go_on(), "");
    moment.pending = false;
    EXPECT_EQ(go_on(), "0;1;1\n");
    EXPECT_EQ(ask("*WAI;GRID?"), "");
    EXPECT_EQ(ask("SYST:ERR?"), "-113,\"Undefined header\"\n");
}

TEST_F(Clients, AreHeldBackNoLongerThanTheyWantToBe) {
    ask("*CLS");
    EXPECT_EQ(ask("ACQ:TIM?;TIM 0.5;TIM? MAX"), "1.000000E+01;3.600000E+03\n");
    moment.pending = true;
    EXPECT_EQ(ask("*OPC?"), "");
    moment.seconds += 0.4;
    EXPECT_EQ(go_on(), "");
    moment.seconds += 0.2;
    EXPECT_EQ(go_on(), "0\n");
    EXPECT_EQ(ask("SYST:ERR?"), "-365,\"Time out error\"\n");
    EXPECT_EQ(ask("*ESR?"), "8\n");
    EXPECT_EQ(ask("*OPC;*ESR?"), "0\n");
    moment.pending = false;
    client.run(moment);
    EXPECT_EQ(ask("*ESR?"), "1\n");
}

TEST_F(Clients, WebPagesAreNotListenedTo) {
    for (const std::string line : {"GET / HTTP/1.1\r", "POST /x HTTP/1.0", "Host: 127.0.0.1:5025\r",
                                   "hOST:x", "PRI * HTTP/2.0"}) {
        Client page(table);
        page.take(line + "\n");
        EXPECT_TRUE(page.closed()) << line;
        EXPECT_FALSE(page.busy()) << line;
        EXPECT_EQ(page.take("DISP:GRID ON\n"), 0U);
    }
    EXPECT_EQ(ask("HOST?"), "");
    EXPECT_FALSE(client.closed());
}

// Whatever a browser can be made to send in front of it: a path that is longer than any line,
// quotes and blocks that go on over line ends, a ticket of an encrypted connection.
TEST_F(Clients, WebPagesHaveNoWayRoundThat) {
    const std::string after = "\r\nDISP:GRID ON\n";
    for (const std::string& prefix :
         {"GET /" + std::string(200'000, 'x') + " HTTP/1.1", std::string("A#3200 / HTTP/1.1"),
          "POST /" + std::string(70'000, '\'') + " HTTP/1.0", std::string("*ESE #3200\r\nHost: x"),
          "hosT:" + std::string(70'000, 'x'), std::string("\x16\x03\x01\x02 ticket")}) {
        Client page(table);
        grid = false;
        const std::string sent = prefix + after + std::string(300, 'x') + after;
        for (std::size_t at = 0; at < sent.size();) { // in pieces, as they may come
            const std::size_t taken = page.take(std::string_view(sent).substr(at, 7));
            if (taken == 0) {
                break;
            }
            at += taken;
            while (page.can_run(moment)) {
                page.run(moment);
            }
        }
        EXPECT_TRUE(page.closed()) << prefix.substr(0, 20);
        EXPECT_FALSE(grid) << prefix.substr(0, 20);
    }
    ask("DISP:GRID ON;*ESE? \"of HTTP/1.1 \"");
    EXPECT_FALSE(client.closed()) << "what only speaks of it";
}

TEST_F(Clients, AreToldAllHeaders) {
    const std::string reply = ask("SYST:HELP:HEAD?");
    EXPECT_EQ(reply.substr(0, 2), "#3");
    EXPECT_EQ(std::stoul(reply.substr(2, 3)), reply.size() - 6);
    EXPECT_NE(reply.find("SYSTem:ERRor[:NEXT]?\n"), std::string::npos);
    EXPECT_NE(reply.find("TIMebase:DELay<n>\n"), std::string::npos);
}

} // namespace
} // namespace kv408
