// The manual lists the commands of the program, all of them and no other, each with what it takes.

#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

/// A command's cell of the first column, as the manual has it.
std::string first_cell(const Command& command) {
    return command.header + (!command.answer ? "" : command.act ? "(?)" : "?");
}

/// What is wrong in the tables' second column is mended where KV408_WRITE_COMMANDS is set.
TEST(Manual, ListsEveryCommandWithWhatItTakes) {
    const RemoteProgram program;
    std::map<std::string, std::string> there;
    for (const Command& command : program.control.table().commands()) {
        EXPECT_TRUE(there.emplace(first_cell(command), command.value).second) << command.header;
    }
    EXPECT_GT(there.size(), 80U);

    const std::string path = std::string(KV408_SOURCE_ROOT) + "/docs/manual/automation.md";
    std::ifstream file(path);
    const std::regex row(R"(^\| `((?:\*|[A-Z])[^`]*)` \| (?:(.*?) )?\| (.*) \|$)");
    std::string mended;
    bool tables = false;
    for (std::string line; std::getline(file, line);) {
        tables = (tables || line == "## Every command") && line != "## Errors";
        std::smatch found;
        if (tables && std::regex_match(line, found, row)) {
            const auto command = there.find(found[1]);
            ASSERT_NE(command, there.end()) << found[1] << " is none, or stands there twice";
            const std::string value = command->second;
            EXPECT_EQ(found[2].str(), value) << found[1];
            line = "| `" + found[1].str() + "` | " + value + (value.empty() ? "" : " ") + "| " +
                   found[3].str() + " |";
            there.erase(command);
        }
        mended += line + '\n';
    }
    EXPECT_TRUE(there.empty()) << there.begin()->first << " | " << there.begin()->second;
    if (std::getenv("KV408_WRITE_COMMANDS") != nullptr) {
        file.close();
        std::ofstream(path, std::ios::binary) << mended;
    }
}

// What stands there as "at first" is what a first start has.
TEST(Manual, TellsWhatAFirstStartHas) {
    RemoteProgram program;
    program.start();
    int asked = 0;
    for (const Command& command : program.control.table().commands()) {
        std::string header = command.header;
        if (const auto suffix = header.find('<'); suffix != std::string::npos) {
            header.replace(suffix, header.find('>') - suffix + 1, "1");
        }
        if (command.act && command.query_takes.most == 1 && command.query_takes.least == 0 &&
            command.value.find("at first") != std::string::npos) {
            EXPECT_EQ(program.ask(header + '?'), program.ask(header + "? DEF")) << header;
            EXPECT_EQ(program.error(), "0,\"No error\"") << header;
            ++asked;
        }
    }
    EXPECT_GT(asked, 20);
}

} // namespace
} // namespace kv408
