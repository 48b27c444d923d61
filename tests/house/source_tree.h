#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kv408::house {

/// One text file of a source tree.
struct SourceFile {
    std::string path; ///< from the root of the tree, with slashes: "src/link/bridge.h"
    std::string text; ///< all of it
};

/// Files of a tree, ordered by path.
using SourceTree = std::vector<SourceFile>;

/// What a check has to complain about, one line a finding; nothing when all is well.
using Findings = std::vector<std::string>;

/// Every file below the folders `tops` of `root`. A folder that does not exist holds no file.
[[nodiscard]] SourceTree read_tree(const std::filesystem::path& root,
                                   const std::vector<std::string>& tops);

/// The text of the one file `path`. A file that cannot be read throws std::runtime_error.
[[nodiscard]] std::string read_text(const std::filesystem::path& path);

/// The lines of `text` without their ends.
[[nodiscard]] std::vector<std::string> lines_of(std::string_view text);

/// `text` without white space at its ends.
[[nodiscard]] std::string trimmed(std::string_view text);

/// The words of `text`, parted by white space and commas.
[[nodiscard]] std::vector<std::string> words_of(std::string_view text);

/// True for C++ source: names that end in .h or .cpp.
[[nodiscard]] bool is_code(std::string_view path);

/// The folder of `path` below `top`: "link" for "src/link/bridge.h" below "src"; empty when the
/// file lies elsewhere or in `top` itself.
[[nodiscard]] std::string folder_of(std::string_view path, std::string_view top);

/// The path of `file` from src/ on, "link/bridge.h", as it is included; empty for a file that is
/// no code of a folder of src/.
[[nodiscard]] std::string path_in_src(const SourceFile& file);

/// What `file` includes with quotes, as it is written.
[[nodiscard]] std::vector<std::string> includes_of(const SourceFile& file);

} // namespace kv408::house
