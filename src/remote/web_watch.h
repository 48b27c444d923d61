#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace kv408 {

/// Sees that what a client sends comes from a web page, through its user's browser, whatever of it
/// the page itself has chosen: a line, of any length and wherever the language sees its end, that
/// is a request ("GET / HTTP/1.1") or a "Host:" header, or the beginning of an encrypted connection
/// (TLS) in the first two bytes.
class WebWatch {
public:
    /// Takes the bytes that come next, piece by piece as they come.
    void take(std::string_view bytes);

    /// True once it has been seen; it stays so.
    [[nodiscard]] bool seen() const { return seen_; }

private:
    /// As many letters as are compared of a line's first and last word.
    using Letters = std::array<char, 5>;

    void take(char byte);

    Letters first_{};            ///< of the line
    Letters word_{};             ///< of its last word
    std::size_t bytes_ = 0;      ///< of the line so far
    std::size_t word_bytes_ = 0; ///< of the word so far
    bool second_word_ = false;   ///< the last word is not the first one
    bool blank_ = false;         ///< the byte before was one
    bool began_ = false;         ///< a byte has come
    bool handshake_ = false;     ///< the first byte of all was that of TLS
    bool seen_ = false;
};

} // namespace kv408
