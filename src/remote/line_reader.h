#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kv408 {

/// Cuts what a client sends into lines. A line ends with LF; one within a block of definite length
/// ("#15hello") belongs to the block.
class LineReader {
public:
    /// A line, without its end, has at most as many bytes.
    static constexpr std::size_t most = std::size_t{64} * 1024;

    /// What has come, in order.
    struct Line {
        std::string text;
        bool too_long = false; ///< it had more than `most` bytes; its text is lost
    };

    /// Takes `bytes` up to the end of a line, and says how many that were. The line is there then
    /// and must be taken away before more comes.
    std::size_t take(std::string_view bytes);

    /// The whole line, if there is one; it is taken away.
    std::optional<Line> line();

private:
    /// What the next byte belongs to.
    enum class Within { plain, string, hash, length, block };

    bool ends_line(char byte);
    bool ends_plain(char byte);
    void read_length(char byte);
    void keep(char byte);

    Line line_;
    bool whole_ = false;
    Within within_ = Within::plain;
    char quote_ = '"';           ///< that ends the string
    int length_digits_ = 0;      ///< of a block's length, still to come
    std::size_t block_left_ = 0; ///< bytes of the block still to come
};

} // namespace kv408
