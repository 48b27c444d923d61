#include "house/source_tree.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace kv408::house {

namespace fs = std::filesystem;

SourceTree read_tree(const fs::path& root, const std::vector<std::string>& tops) {
    SourceTree tree;
    for (const std::string& top : tops) {
        if (!fs::is_directory(root / top)) {
            continue;
        }
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
            if (entry.is_regular_file()) {
                tree.push_back({entry.path().lexically_relative(root).generic_string(),
                                read_text(entry.path())});
            }
        }
    }
    std::sort(tree.begin(), tree.end(),
              [](const SourceFile& a, const SourceFile& b) { return a.path < b.path; });
    return tree;
}

std::string read_text(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::vector<std::string> words_of(std::string_view text) {
    constexpr std::string_view gaps = " \t\r\n,";
    std::vector<std::string> words;
    for (auto begin = text.find_first_not_of(gaps); begin != std::string_view::npos;) {
        const auto end = std::min(text.find_first_of(gaps, begin), text.size());
        words.emplace_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(gaps, end);
    }
    return words;
}

bool is_code(std::string_view path) {
    return path.ends_with(".h") || path.ends_with(".cpp");
}

std::string folder_of(std::string_view path, std::string_view top) {
    if (!path.starts_with(top) || path.size() <= top.size() || path[top.size()] != '/') {
        return {};
    }
    const std::string_view below = path.substr(top.size() + 1);
    const auto slash = below.find('/');
    return slash == std::string_view::npos ? std::string() : std::string(below.substr(0, slash));
}

std::string path_in_src(const SourceFile& file) {
    const bool in_folder = is_code(file.path) && !folder_of(file.path, "src").empty();
    return in_folder ? file.path.substr(4) : std::string();
}

std::vector<std::string> includes_of(const SourceFile& file) {
    static const std::regex include(R"re(^\s*#\s*include\s*"([^"]+)")re");
    std::vector<std::string> includes;
    for (const std::string& line : lines_of(file.text)) {
        if (std::smatch match;
            line.find('#') != std::string::npos && std::regex_search(line, match, include)) {
            includes.push_back(match[1].str());
        }
    }
    return includes;
}

} // namespace kv408::house
