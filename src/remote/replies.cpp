#include "remote/replies.h"

#include <array>
#include <charconv>
#include <cmath>

namespace kv408 {

std::string whole_reply(std::int64_t value) {
    return std::to_string(value);
}

std::string real_reply(double value) {
    if (std::isnan(value)) {
        return "9.91E+37";
    }
    if (std::isinf(value)) {
        return value > 0 ? "9.9E+37" : "-9.9E+37";
    }
    constexpr int decimals = 6;
    std::array<char, 32> text{};
    const double plain = value == 0.0 ? 0.0 : value; // no "-0"
    char* const end = std::to_chars(text.data(), text.data() + text.size(), plain,
                                    std::chars_format::scientific, decimals)
                          .ptr;
    std::string reply(text.data(), end);
    reply[reply.find('e')] = 'E';
    return reply;
}

std::string boolean_reply(bool value) {
    return value ? "1" : "0";
}

std::string string_reply(std::string_view text) {
    std::string reply = "\"";
    for (const char letter : text) {
        reply += letter;
        if (letter == '"') {
            reply += letter;
        }
    }
    return reply + '"';
}

void add_item(std::string& list, std::string_view item) {
    if (!list.empty()) {
        list += ',';
    }
    list += item;
}

std::string block_head(std::size_t size) {
    const std::string length = std::to_string(size);
    return '#' + std::to_string(length.size()) + length;
}

std::string block_reply(std::string_view bytes) {
    const std::string head = block_head(bytes.size());
    std::string reply;
    // With the end of the line, so that a picture is not moved once more.
    reply.reserve(head.size() + bytes.size() + 1);
    return reply.append(head).append(bytes);
}

} // namespace kv408
