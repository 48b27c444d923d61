#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv408 {

/// Whether `word` is the short or the long form of `both`, in any case; the capitals of `both` are
/// its short form: `VOLT` and `voltage` are `VOLTage`.
[[nodiscard]] bool is_form_of(std::string_view word, std::string_view both);

/// The short form of `both`: its capitals and digits.
[[nodiscard]] std::string short_form(std::string_view both);

/// A header of the command tree, as manuals write it: short forms in capitals, nodes that may be
/// left out in brackets, and `<n>` where a number 1 or 2, `<1-3>` where one of 1 to 3 may stand.
/// Without the number 1 is meant. `SYSTem:ERRor[:NEXT]`, `CHANnel<n>:SCALe`, `*IDN`.
class HeaderPattern {
public:
    /// The pattern written as `text`.
    explicit HeaderPattern(std::string_view text);

    /// How a header compares.
    struct Match {
        enum class Kind { none, whole, suffix_out_of_range };
        Kind kind = Kind::none;
        std::vector<int> suffixes = {}; ///< the numbers, in order; of a whole match
    };

    /// Compares the header whose nodes are `nodes`.
    [[nodiscard]] Match match(std::span<const std::string> nodes) const;

private:
    struct Node {
        std::string forms;
        int suffixes = 0; ///< the largest number behind it, 0 where none may stand
        bool optional = false;
    };

    [[nodiscard]] Match match(std::span<const Node> pattern,
                              std::span<const std::string> nodes) const;

    std::vector<Node> nodes_;
};

} // namespace kv408
