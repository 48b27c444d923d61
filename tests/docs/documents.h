#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kv408::docs {

/// The folder of this tree.
inline const std::filesystem::path root = KV408_SOURCE_ROOT;

/// What a check has to complain about, one line a finding; nothing when all is well.
using Findings = std::vector<std::string>;

/// The text of the one file `path`. A file that cannot be read throws std::runtime_error.
[[nodiscard]] std::string read_text(const std::filesystem::path& path);

/// All pages of the manual in `folder` by their names without ".md".
[[nodiscard]] std::map<std::string, std::string> read_pages(const std::filesystem::path& folder);

/// `markdown` as it is read: without marks of emphasis, code and escapes, each run of white space
/// one blank.
[[nodiscard]] std::string plain(std::string_view markdown);

/// The cells of each line of `markdown` that is a table row, plain.
[[nodiscard]] std::vector<std::vector<std::string>> table_rows(std::string_view markdown);

/// The string literals of the C++ source `code`, those that stand side by side as one, without the
/// comments; escapes are resolved.
[[nodiscard]] std::vector<std::string> literals(std::string_view code);

/// True for a literal that users may come to read: of several words, or one word that begins with
/// a capital letter; not a file dialog's filter and not a number's format.
[[nodiscard]] bool is_for_users(std::string_view literal);

/// The targets of all links and pictures in `markdown`.
[[nodiscard]] std::vector<std::string> links(std::string_view markdown);

} // namespace kv408::docs
