#include "docs/documents.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace kv408::docs {
namespace {

bool is_space(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}

std::string one_blank(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (!is_space(character)) {
            result += character;
        } else if (!result.empty() && result.back() != ' ') {
            result += ' ';
        }
    }
    if (!result.empty() && result.back() == ' ') {
        result.pop_back();
    }
    return result;
}

/// The literal that begins at `at`, which is left behind its end.
std::string take_literal(std::string_view code, std::size_t& at) {
    std::string text;
    for (++at; at < code.size() && code[at] != '"'; ++at) {
        if (code[at] == '\\' && at + 1 < code.size()) {
            ++at;
            text += code[at] == 'n' || code[at] == 't' ? ' ' : code[at];
        } else {
            text += code[at];
        }
    }
    ++at;
    return text;
}

/// Leaves `at` behind the line that it is in.
void skip_line(std::string_view code, std::size_t& at) {
    at = std::min(code.find('\n', at), code.size());
}

} // namespace

std::string read_text(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(path.string() + " cannot be read");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

std::map<std::string, std::string> read_pages(const std::filesystem::path& folder) {
    std::map<std::string, std::string> pages;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".md") {
            pages[entry.path().stem().string()] = read_text(entry.path());
        }
    }
    return pages;
}

std::string plain(std::string_view markdown) {
    std::string text;
    for (std::size_t at = 0; at < markdown.size(); ++at) {
        const std::string_view rest = markdown.substr(at);
        if (rest.starts_with('`')) {
            continue;
        }
        if (rest.starts_with("**")) {
            ++at;
        } else if (rest.starts_with('\\') && rest.size() > 1) {
            text += markdown[++at];
        } else {
            text += rest.front();
        }
    }
    return one_blank(text);
}

std::vector<std::vector<std::string>> table_rows(std::string_view markdown) {
    std::vector<std::vector<std::string>> rows;
    while (!markdown.empty()) {
        const auto end = std::min(markdown.find('\n'), markdown.size());
        std::string_view line = markdown.substr(0, end);
        markdown.remove_prefix(std::min(end + 1, markdown.size()));
        if (!line.starts_with('|') || line.starts_with("|-")) {
            continue;
        }
        std::vector<std::string> cells;
        for (line.remove_prefix(1); line.find('|') != std::string_view::npos;) {
            cells.push_back(plain(line.substr(0, line.find('|'))));
            line.remove_prefix(line.find('|') + 1);
            cells.back().erase(0, cells.back().find_first_not_of(' '));
        }
        rows.push_back(std::move(cells));
    }
    return rows;
}

std::vector<std::string> literals(std::string_view code) {
    std::vector<std::string> found;
    bool beside = false;
    for (std::size_t at = 0; at < code.size();) {
        const std::string_view rest = code.substr(at);
        if (rest.starts_with("//") || rest.starts_with("#include")) {
            skip_line(code, at);
        } else if (rest.starts_with("'\"'")) {
            at += 3;
        } else if (rest.front() == '"') {
            const std::string text = take_literal(code, at);
            if (beside) {
                found.back() += text;
            } else {
                found.push_back(text);
            }
            beside = true;
        } else {
            beside = beside && is_space(rest.front());
            ++at;
        }
    }
    return found;
}

bool is_for_users(std::string_view literal) {
    const std::string text = one_blank(literal);
    if (text.find_first_of("|%") != std::string::npos) {
        return false;
    }
    if (text.find(' ', text.find_first_not_of(' ')) != std::string::npos) {
        return true;
    }
    const std::regex word("[A-Z][a-zA-Z]*[a-z][a-zA-Z]*[.!:]*");
    return std::regex_match(text, word);
}

std::vector<std::string> links(std::string_view markdown) {
    std::vector<std::string> targets;
    const std::string text(markdown);
    const std::regex link(R"re(\]\(([^)\s]+)\)|<img src="([^"]+)")re");
    for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
        targets.push_back((*at)[1].matched ? (*at)[1].str() : (*at)[2].str());
    }
    return targets;
}

} // namespace kv408::docs
