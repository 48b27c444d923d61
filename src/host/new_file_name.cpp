#include "host/new_file_name.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "host/elsewhere.h"
#include "host/path_text.h"
#include "host/processes.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

/// What follows the name of a file in that of its new content: then come the process that writes
/// it, a minus and a number that nobody can foresee.
constexpr std::string_view new_mark = ".kv408-new";
constexpr std::size_t number_digits = 16;
/// Longest name that new content gets, in bytes. Every file system allows as much, and the name of
/// the file itself may have all that it allows.
constexpr std::size_t longest_name = 128;

/// Age from which new content counts as left behind. Where several computers share a folder the
/// process that writes may run on another one.
constexpr std::chrono::hours leftover_age{1};

/// `number` as `number_digits` hexadecimal digits.
std::string digits_of(std::uint64_t number) {
    constexpr int hexadecimal = 16;
    std::array<char, number_digits> text = {};
    auto* const end =
        std::to_chars(text.data(), text.data() + text.size(), number, hexadecimal).ptr;
    std::string digits(text.data(), end);
    return digits.insert(0, number_digits - digits.size(), '0');
}

/// The part of the file's name `name` that the name of its new content begins with. A letter of
/// several bytes is not cut.
std::filesystem::path shown_part(const std::filesystem::path& name) {
    constexpr std::size_t longest_process = 10;
    const std::size_t longest =
        longest_name - new_mark.size() - longest_process - 1 - number_digits;
    const auto& text = name.native();
    std::size_t length = std::min(text.size(), longest);
#ifndef _WIN32
    const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) >> 6U) == 2U; };
    while (length < text.size() && length > 0 && continues(text[length])) {
        --length;
    }
#endif
    return text.substr(0, length);
}

/// The process that `text` names, all of it digits; nothing otherwise.
std::optional<int> process_in(const std::filesystem::path::string_type& text) {
    const auto is_digit = [](auto unit) { return unit >= '0' && unit <= '9'; };
    return std::all_of(text.begin(), text.end(), is_digit) ? int32_in(text_of_path(text))
                                                           : std::nullopt;
}

/// Whether `text` is a minus and the number that stands behind a process.
bool is_number(const std::filesystem::path::string_type& text) {
    const auto is_hex = [](auto unit) {
        return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'f');
    };
    return text.size() == number_digits + 1 && text.front() == '-' &&
           std::all_of(text.begin() + 1, text.end(), is_hex);
}

/// The process that wrote the new content called `name` of the file called `file`; nothing when it
/// is not called so. No name is turned into text that might not be text.
std::optional<int> writer_of(const std::filesystem::path& name, const std::filesystem::path& file) {
    std::filesystem::path shown = shown_part(file);
    const auto start = (shown += new_mark).native();
    const auto& text = name.native();
    if (!text.starts_with(start)) {
        return std::nullopt;
    }
    const auto rest = text.substr(start.size());
    const auto minus = std::min(rest.find('-'), rest.size());
    // Earlier releases named the process alone.
    return minus == rest.size() || is_number(rest.substr(minus)) ? process_in(rest.substr(0, minus))
                                                                 : std::nullopt;
}

/// True when the file at `path` was last written more than `leftover_age` ago.
bool is_old(const std::filesystem::path& path) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(path, error);
    return !error && std::filesystem::file_time_type::clock::now() - written > leftover_age;
}

} // namespace

std::filesystem::path new_file_path(const std::filesystem::path& target, std::uint64_t number) {
    std::filesystem::path name = shown_part(target.filename());
    name += new_mark;
    name += std::to_string(process_id()) + '-' + digits_of(number);
    return target.parent_path() / name;
}

void remove_leftovers(const std::filesystem::path& target) {
    const auto folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto writer = writer_of(entry->path().filename(), target.filename());
        if (writer && !process_runs(*writer) && is_own_file(entry->path()) &&
            is_old(entry->path())) {
            std::error_code refused;
            std::filesystem::remove(entry->path(), refused);
        }
    }
}

} // namespace kv408
