// What kv408-server is started with, and what it writes.

#include <sstream>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/event_log.h"
#include "server/options.h"

namespace kv408 {
namespace {

using testing::HasSubstr;

struct Read {
    explicit Read(const std::vector<const char*>& arguments)
        : line(read_command_line(arguments, out, err)) {}

    std::ostringstream out;
    std::ostringstream err;
    CommandLine line;
};

TEST(ServerOptions, AreThisComputerAloneUnlessToldOtherwise) {
    const Read none({});
    ASSERT_TRUE(none.line.options);
    EXPECT_EQ(none.line.options->place.address, "127.0.0.1");
    EXPECT_EQ(none.line.options->place.port, 5025);
    EXPECT_FALSE(none.line.options->simulated);
    const Read all({"--listen", "::", "--simulated", "--port", "0"});
    ASSERT_TRUE(all.line.options);
    EXPECT_EQ(all.line.options->place.address, "::");
    EXPECT_EQ(all.line.options->place.port, 0);
    EXPECT_TRUE(all.line.options->simulated);
}

TEST(ServerOptions, AskForTexts) {
    const Read help({"--simulated", "--help"});
    EXPECT_FALSE(help.line.options);
    EXPECT_EQ(help.line.exit_code, 0);
    EXPECT_THAT(help.out.str(), HasSubstr("Usage: kv408-server"));
    EXPECT_THAT(help.out.str(), HasSubstr("INT, TERM and HUP save"));
    EXPECT_EQ(Read({"--version"}).out.str(), std::string("kv408-server ") + KV408_VERSION + '\n');
}

TEST(ServerOptions, AreRefused) {
    for (const std::vector<const char*>& wrong : {std::vector{"--port"},
                                                  {"--port", "65536"},
                                                  {"--port", "-1"},
                                                  {"--port", "5025x"},
                                                  {"--listen"},
                                                  {"--tcp"},
                                                  {"5025"}}) {
        const Read read(wrong);
        EXPECT_FALSE(read.line.options) << wrong.front();
        EXPECT_EQ(read.line.exit_code, 2) << wrong.front();
        EXPECT_THAT(read.err.str(), HasSubstr("kv408-server: ")) << wrong.front();
        EXPECT_TRUE(read.out.str().empty());
    }
}

TEST(ServerLog, TellsTroubleOnceUntilAllIsWell) {
    std::ostringstream out;
    EventLog log(out);
    EXPECT_TRUE(log.write_trouble("no\nanswer"));
    EXPECT_FALSE(log.write_trouble("no\nanswer"));
    log.note_well();
    EXPECT_TRUE(log.write_trouble("no\nanswer"));
    const std::string text = out.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << text;
}

} // namespace
} // namespace kv408
