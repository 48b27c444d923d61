#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "remote/scpi_error.h"

namespace kv408 {

/// A value behind a header.
struct Parameter {
    /// What it was written as.
    enum class Kind {
        word,   ///< `MIN`, `CHAN1`
        number, ///< `20`, `-1.5E-3 V`, `#HFF`
        text,   ///< in quotes, either kind
        block,  ///< bytes of definite length
    };

    Kind kind = Kind::word;
    std::string
        text; ///< the word, the text or the bytes; of a number its digits with sign and point
    int exponent = 0;      ///< of a number, to the base of 10
    std::string unit = {}; ///< behind a number, in capitals, with its prefix; empty for none
};

/// One command or query of a line.
struct MessageUnit {
    std::vector<std::string>
        nodes;              ///< of the header, as written; a common command's begins with `*`
    bool from_root = false; ///< the header begins with a colon
    bool query = false;     ///< it ends with a question mark
    std::vector<Parameter> parameters;
};

/// Reads the commands and queries out of a line, by IEEE 488.2, chapter 7, and SCPI-99, volume 1,
/// chapter 6.
class MessageReader {
public:
    /// Reads `line`, which has no end of line.
    explicit MessageReader(std::string line) : line_(std::move(line)) {}

    /// The next one, none at the end of the line. Throws `Refused` where the line is not in the
    /// language; the rest of it cannot be read then.
    std::optional<MessageUnit> next();

private:
    [[nodiscard]] bool at_end() const { return place_ == line_.size(); }
    [[nodiscard]] char here() const { return at_end() ? '\0' : line_[place_]; }
    [[nodiscard]] bool here_is(std::string_view any) const;
    bool skip_white();
    void read_header(MessageUnit& unit);
    std::string read_mnemonic();
    void read_parameters(MessageUnit& unit);
    Parameter read_parameter();
    Parameter read_number();
    int read_exponent();
    Parameter read_in_base();
    Parameter read_string();
    Parameter read_block();

    std::string line_;
    std::size_t place_ = 0;
};

} // namespace kv408
