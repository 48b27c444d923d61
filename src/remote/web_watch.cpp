#include "remote/web_watch.h"

#include "remote/letters.h"

namespace kv408 {
namespace {

constexpr std::string_view host_header = "host:";
constexpr std::string_view http_version = "HTTP/";

// A record of the protocol TLS begins with its kind, a handshake, and the version's first byte.
constexpr char handshake_record = 0x16;
constexpr char record_version = 0x03;

} // namespace

void WebWatch::take(std::string_view bytes) {
    for (const char byte : bytes) {
        take(byte);
    }
}

void WebWatch::take(char byte) {
    if (handshake_) {
        seen_ = seen_ || byte == record_version;
        handshake_ = false;
    }
    if (!began_) {
        began_ = true;
        handshake_ = byte == handshake_record;
    }
    if (byte == '\n') {
        const bool request =
            second_word_ && std::string_view(word_.data(), word_.size()) == http_version;
        seen_ = seen_ || request;
        bytes_ = 0;
        word_bytes_ = 0;
        second_word_ = false;
        blank_ = false;
        word_ = {};
        return;
    }
    if (bytes_ < first_.size()) {
        first_.at(bytes_) = byte;
    }
    ++bytes_;
    seen_ = seen_ || (bytes_ == first_.size() &&
                      alike(std::string_view(first_.data(), first_.size()), host_header));
    const bool blank = byte == ' ' || byte == '\t' || byte == '\r';
    if (!blank) {
        if (blank_) { // blanks at the end of the line begin no word
            second_word_ = true;
            word_bytes_ = 0;
            word_ = {};
        }
        if (word_bytes_ < word_.size()) {
            word_.at(word_bytes_) = byte;
        }
        ++word_bytes_;
    }
    blank_ = blank;
}

} // namespace kv408
