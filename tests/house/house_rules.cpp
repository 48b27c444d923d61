#include "house/house_rules.h"

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace kv408::house {

namespace {

/// A finding at `line`, counted from 0, of `file`.
std::string at(const SourceFile& file, std::size_t line, const std::string& what) {
    return file.path + ":" + std::to_string(line + 1) + ": " + what;
}

/// Whether one of `words` stands in `line`. Takes much less time than to search for an expression.
bool has_any(const std::string& line, const std::vector<std::string>& words) {
    return std::any_of(words.begin(), words.end(), [&line](const std::string& word) {
        return line.find(word) != std::string::npos;
    });
}

/// What marks unfinished work: notes to self, code and tests switched off, and lint silenced
/// without saying which check. The marks are put together here so that this file bears none.
std::regex unfinished_marks() {
    const std::string words = std::string("TO") + "DO|FIX" + "ME|XX" + "X";
    const std::string skipped = std::string("GTEST_") + "SKIP|Q" + "SKIP";
    const std::string disabled = std::string("DIS") + "ABLED_";
    const std::string no_lint = std::string("NO") + "LINT(NEXTLINE|BEGIN|END)?(?![A-Z(])";
    return std::regex(R"(\b()" + words + "|" + skipped + R"()\b|\b)" + disabled + R"(|\b)" +
                      no_lint + R"(|#\s*if\s+[0]\b)");
}

/// One of these is in every line that has such a mark.
const std::vector<std::string>& parts_of_marks() {
    static const std::vector<std::string> parts = {"ODO",    "IXME",  "XX", "SKIP",
                                                   "ABLED_", "OLINT", "#"};
    return parts;
}

} // namespace

Findings check_lengths(const SourceTree& tree) {
    Findings findings;
    for (const SourceFile& file : tree) {
        const std::size_t lines = lines_of(file.text).size();
        if (!path_in_src(file).empty() && lines > most_lines) {
            findings.push_back(file.path + " has " + std::to_string(lines) + " lines, " +
                               std::to_string(most_lines) + " are the most");
        }
    }
    return findings;
}

Findings check_unfinished(const SourceTree& tree) {
    const std::regex marks = unfinished_marks();
    Findings findings;
    for (const SourceFile& file : tree) {
        if (!is_code(file.path)) {
            continue;
        }
        const std::vector<std::string> lines = lines_of(file.text);
        for (std::size_t line = 0; line < lines.size(); ++line) {
            if (std::smatch match; has_any(lines[line], parts_of_marks()) &&
                                   std::regex_search(lines[line], match, marks)) {
                findings.push_back(at(file, line, match.str()));
            }
        }
    }
    return findings;
}

Findings check_qt(const SourceTree& tree) {
    static const std::regex qt(R"re(^\s*#\s*include\s*[<"](Q[A-Z]|Qt[A-Z][A-Za-z]*/))re");
    Findings findings;
    for (const SourceFile& file : tree) {
        const std::string folder = folder_of(file.path, "src") + folder_of(file.path, "tests");
        if (!is_code(file.path) || folder.empty() || folder == "ui" || folder == "demo") {
            continue;
        }
        const std::vector<std::string> lines = lines_of(file.text);
        for (std::size_t line = 0; line < lines.size(); ++line) {
            if (has_any(lines[line], {"#"}) && std::regex_search(lines[line], qt)) {
                findings.push_back(at(file, line, "Qt outside the window: " + lines[line]));
            }
        }
    }
    return findings;
}

Findings check_tested(const SourceTree& tree) {
    static const std::regex test(R"(^(TEST|TEST_F|TEST_P|TYPED_TEST)\(|QTEST_)");
    std::set<std::string> folders;
    std::set<std::string> tested;
    for (const SourceFile& file : tree) {
        folders.insert(folder_of(file.path, "src"));
        if (!is_code(file.path)) {
            continue;
        }
        for (const std::string& line : lines_of(file.text)) {
            if (has_any(line, {"TEST"}) && std::regex_search(line, test)) {
                tested.insert(folder_of(file.path, "tests"));
                break;
            }
        }
    }
    Findings findings;
    for (const std::string& folder : folders) {
        if (!folder.empty() && !tested.contains(folder)) {
            findings.push_back("src/" + folder + " has no test in tests/" + folder);
        }
    }
    return findings;
}

Findings check_hosts(const SourceTree& tree) {
    static const std::regex none(R"re(https?://(www\.w3\.org|schemas\.microsoft\.com)/[^\s"'<>]*)re"
                                 R"re(|https?://www\.debian\.org/doc/[^\s"'<>]*)re"
                                 R"re(|<[^\s@<>]+@[^\s@<>]+>)re");
    static const std::regex address(R"re([a-z]+://[A-Za-z0-9-]+\.[^\s"')>]*)re"
                                    R"re(|\b[a-z0-9-]+(\.[a-z0-9-]+)*)re"
                                    R"re(\.(org|net|com|edu|gov|info|io|de|uk|fr|eu|ch|jp))re"
                                    R"re(\.?(?![\w-]|\.\w))re");
    Findings findings;
    for (const SourceFile& file : tree) {
        if (is_code(file.path)) {
            continue;
        }
        const std::vector<std::string> lines = lines_of(file.text);
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const std::string rest = std::regex_replace(lines[line], none, " ");
            if (std::smatch match; std::regex_search(rest, match, address)) {
                findings.push_back(at(file, line, "names a host: " + match.str()));
            }
        }
    }
    return findings;
}

} // namespace kv408::house
