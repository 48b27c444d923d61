// Where the documents list packages, they list those that the scripts install.

#include <filesystem>
#include <set>
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "docs/documents.h"

namespace kv408::docs {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

/// The packages in the list `name` of packaging/debian.
std::set<std::string> packages(const std::string& name) {
    std::set<std::string> found;
    std::istringstream lines(read_text(root / "packaging" / "debian" / name));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream word(line.substr(0, line.find('#')));
        if (std::string package; word >> package) {
            found.insert(package);
        }
    }
    return found;
}

/// What stands in backquotes in `text` from `begin` to `end`.
std::set<std::string> quoted_between(const std::string& text, const std::string& begin,
                                     const std::string& end) {
    const auto first = text.find(begin);
    std::string part = text.substr(first, text.find(end, first) - first);
    std::set<std::string> found;
    for (auto open = part.find('`'); open != std::string::npos; open = part.find('`')) {
        const auto close = part.find('`', open + 1);
        found.insert(part.substr(open + 1, close - open - 1));
        part.erase(0, close + 1);
    }
    return found;
}

TEST(Packages, OfTheReadmeAreThoseThatRunInstalls) {
    const std::set<std::string> told =
        quoted_between(read_text(root / "README.md"), "Debian 12 calls them", "Then");
    EXPECT_THAT(told, Contains("qt6-base-dev"));
    EXPECT_EQ(told, packages("packages-to-build.txt"));
}

TEST(Packages, OfTestsAndBenchmarksAreNoneOfThePrograms) {
    EXPECT_THAT(packages("packages-to-test.txt"),
                IsSupersetOf({"libgmock-dev", "libbenchmark-dev", "libumockdev-dev", "pandoc"}));
    for (const std::string& package : packages("packages-to-test.txt")) {
        EXPECT_FALSE(packages("packages-to-build.txt").contains(package)) << package;
    }
}

} // namespace
} // namespace kv408::docs
