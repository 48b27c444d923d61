#include "host/shown_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "host/path_text.h"

namespace kv408 {
namespace {

/// A character at the start of a text: its number, and how many bytes it takes.
struct Character {
    std::uint32_t number = 0;
    std::size_t length = 0; ///< 0: no UTF-8
};

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

/// Characters that are not read but do something, in their order.
constexpr std::array<Range, 13> steering = {{{0x0, 0x1F},
                                             {0x7F, 0x9F},
                                             {0xAD, 0xAD},
                                             {0x600, 0x605},
                                             {0x61C, 0x61C},
                                             {0x180E, 0x180E},
                                             {0x200B, 0x200F},
                                             {0x2028, 0x202E},
                                             {0x2060, 0x206F},
                                             {0xFEFF, 0xFEFF},
                                             {0xFFF0, 0xFFFB},
                                             {0x1BCA0, 0x1BCA3},
                                             {0xE0000, 0xE0FFF}}};

Character first_of(std::string_view text) {
    constexpr std::array<std::uint32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return {.number = lead, .length = 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {};
    }
    std::uint32_t number = lead & (0x7FU >> length);
    for (std::size_t index = 1; index < length; ++index) {
        if (byte(index) >> 6U != 2) {
            return {};
        }
        number = number << 6U | (byte(index) & 0x3FU);
    }
    const bool surrogate = number >= 0xD800 && number <= 0xDFFF;
    return number < least.at(length) || number > 0x10FFFF || surrogate
               ? Character{}
               : Character{.number = number, .length = length};
}

bool is_read(Character character) {
    return character.length > 0 &&
           std::none_of(steering.begin(), steering.end(), [&](const Range& range) {
               return character.number >= range.first && character.number <= range.last;
           });
}

std::string shown(std::string_view text, std::string_view kept) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    while (!text.empty()) {
        const Character character = first_of(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        const std::string_view bytes = text.substr(0, length);
        if (is_read(character) || kept.find(bytes.front()) != std::string_view::npos) {
            result += bytes;
        } else {
            for (const char byte : bytes) {
                const auto value = static_cast<unsigned char>(byte);
                result += "\\x";
                result += digits[value >> 4U];
                result += digits[value & 0xFU];
            }
        }
        text.remove_prefix(length);
    }
    return result;
}

} // namespace

std::string shown_line(std::string_view text) {
    return shown(text, "");
}

std::string shown_path(const std::filesystem::path& path) {
    return shown_line(text_of_path(path));
}

std::string shown_lines(std::string_view text) {
    return shown(text, "\n\t");
}

} // namespace kv408
