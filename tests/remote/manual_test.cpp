// The manual lists the commands of the program, all of them and no other.

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

TEST(Manual, ListsEveryCommand) {
    std::ifstream file(std::string(KV408_SOURCE_ROOT) + "/docs/manual/automation.md");
    std::set<std::string> told;
    const std::regex row(R"(^\| `((?:\*|[A-Z])[^`]*)` \|.*)");
    bool tables = false;
    for (std::string line; std::getline(file, line);) {
        tables = (tables || line == "## Every command") && line != "## Errors";
        std::smatch found;
        if (tables && std::regex_match(line, found, row)) {
            EXPECT_TRUE(told.insert(found[1]).second) << found[1] << " twice";
        }
    }
    const RemoteProgram program;
    std::set<std::string> there;
    for (const Command& command : program.control.table().commands()) {
        there.insert(command.header + (!command.answer ? "" : command.act ? "(?)" : "?"));
    }
    EXPECT_GT(there.size(), 80U);
    EXPECT_EQ(told, there);
}

} // namespace
} // namespace kv408
