#include "remote/line_reader.h"

#include <utility>

namespace kv408 {

std::size_t LineReader::take(std::string_view bytes) {
    std::size_t taken = 0;
    while (!whole_ && taken < bytes.size()) {
        const char byte = bytes[taken++];
        if (ends_line(byte)) {
            whole_ = true;
            within_ = Within::plain;
        } else {
            keep(byte);
        }
    }
    return taken;
}

std::optional<LineReader::Line> LineReader::line() {
    if (!whole_) {
        return std::nullopt;
    }
    whole_ = false;
    return std::exchange(line_, Line{});
}

void LineReader::keep(char byte) {
    if (line_.text.size() == most) {
        line_.too_long = true;
        line_.text = {};
        line_.text.shrink_to_fit();
    }
    if (!line_.too_long) {
        line_.text += byte;
    }
}

bool LineReader::ends_line(char byte) {
    switch (within_) {
    case Within::plain:
        return ends_plain(byte);
    case Within::string:
        if (byte == quote_) {
            within_ = Within::plain;
        }
        return byte == '\n';
    case Within::hash:
        if (byte >= '1' && byte <= '9') {
            within_ = Within::length;
            length_digits_ = byte - '0';
            block_left_ = 0;
            return false;
        }
        within_ = Within::plain;
        return ends_plain(byte);
    case Within::length:
        if (byte < '0' || byte > '9') {
            within_ = Within::plain;
            return ends_plain(byte);
        }
        read_length(byte);
        return false;
    case Within::block:
        if (--block_left_ == 0) {
            within_ = Within::plain;
        }
        return false;
    }
    return false;
}

bool LineReader::ends_plain(char byte) {
    if (byte == '"' || byte == '\'') {
        within_ = Within::string;
        quote_ = byte;
    } else if (byte == '#') {
        within_ = Within::hash;
    }
    return byte == '\n';
}

void LineReader::read_length(char byte) {
    block_left_ = block_left_ * 10 + static_cast<std::size_t>(byte - '0');
    if (--length_digits_ == 0) {
        within_ = block_left_ > 0 ? Within::block : Within::plain;
    }
}

} // namespace kv408
