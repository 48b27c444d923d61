// Every numeric setting of the program's own table takes the ends of its range and its preset.

#include <string>

#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

/// What a query answers after `header` has been set to `limit`, which is `wanted`: registers have
/// bits that are never used, and are 0 whatever is written.
std::string kept_of(const std::string& header, const std::string& limit,
                    const std::string& wanted) {
    if (limit == " MAX" && header == "*SRE") {
        return "191"; // without bit 6, its own sum
    }
    if (limit == " MAX" && header.starts_with("STATus:")) {
        return "32767"; // without bit 15, a sign elsewhere
    }
    return wanted;
}

TEST(EverySetting, TakesTheEndsOfItsRangeAndItsPreset) {
    RemoteProgram program;
    program.start();
    program.ask("CURS:MODE TIME");
    int tried = 0;
    for (const Command& command : program.control.table().commands()) {
        const bool numeric = command.act && command.answer && command.query_takes.most == 1 &&
                             command.query_takes.least == 0;
        if (!numeric) {
            continue;
        }
        std::string header = command.header;
        if (const auto suffix = header.find('<'); suffix != std::string::npos) {
            header.replace(suffix, header.find('>') - suffix + 1, "2");
        }
        for (const char* const limit : {" MAX", " MIN", " DEF"}) {
            const std::string wanted = program.ask(header + '?' + limit);
            EXPECT_EQ(program.ask(header + limit), "") << header;
            EXPECT_EQ(program.error(), "0,\"No error\"") << header << limit;
            EXPECT_EQ(program.ask(header + '?'), kept_of(header, limit, wanted)) << header << limit;
            ++tried;
        }
    }
    EXPECT_GT(tried, 80);
}

} // namespace
} // namespace kv408
