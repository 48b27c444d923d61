#include "remote/header_pattern.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <iterator>

#include "remote/letters.h"

namespace kv408 {
namespace {

// The number at the end of `node`, of which `word` is what stands before it; 1 where there is none,
// and 0, which nothing allows, for one that is too large to be read.
int suffix_of(std::string_view node, std::string_view& word) {
    std::size_t letters = node.size();
    while (letters > 0 && is_digit(node[letters - 1])) {
        --letters;
    }
    word = node.substr(0, letters);
    int number = 1;
    if (letters < node.size()) {
        const auto read = std::from_chars(node.data() + letters, node.data() + node.size(), number);
        number = read.ec == std::errc{} ? number : 0;
    }
    return number;
}

// The largest number that `range`, the text between "<" and ">", allows.
int largest_in(std::string_view range) {
    if (range == "n") {
        return 2;
    }
    assert(range.size() == 3 && range.substr(0, 2) == "1-" && is_digit(range[2]));
    return range[2] - '0';
}

} // namespace

bool is_form_of(std::string_view word, std::string_view both) {
    return alike(word, both) || alike(word, short_form(both));
}

std::string short_form(std::string_view both) {
    std::string capitals;
    std::copy_if(both.begin(), both.end(), std::back_inserter(capitals),
                 [](char letter) { return !(letter >= 'a' && letter <= 'z'); });
    return capitals;
}

HeaderPattern::HeaderPattern(std::string_view text) {
    while (!text.empty()) {
        Node node;
        node.optional = text.front() == '[';
        text.remove_prefix(std::min(text.find_first_not_of("[:"), text.size()));
        const std::string_view whole = text.substr(0, text.find_first_of("[:]"));
        text.remove_prefix(whole.size());
        text.remove_prefix(node.optional ? 1 : 0); // the bracket that ends it
        const std::size_t range = whole.find('<');
        node.forms = whole.substr(0, range);
        if (range != std::string_view::npos) {
            node.suffixes = largest_in(whole.substr(range + 1, whole.size() - range - 2));
        }
        nodes_.push_back(std::move(node));
    }
}

HeaderPattern::Match HeaderPattern::match(std::span<const std::string> nodes) const {
    return match(nodes_, nodes);
}

HeaderPattern::Match HeaderPattern::match(std::span<const Node> pattern,
                                          std::span<const std::string> nodes) const {
    if (pattern.empty()) {
        return {nodes.empty() ? Match::Kind::whole : Match::Kind::none};
    }
    const Node& node = pattern.front();
    if (!nodes.empty()) {
        std::string_view word = nodes.front();
        const int suffix = node.suffixes > 0 ? suffix_of(nodes.front(), word) : 1;
        if (is_form_of(word, node.forms)) {
            Match rest = match(pattern.subspan(1), nodes.subspan(1));
            if (node.suffixes > 0 && rest.kind != Match::Kind::none) {
                rest.suffixes.insert(rest.suffixes.begin(), suffix);
                if (suffix < 1 || suffix > node.suffixes) {
                    rest.kind = Match::Kind::suffix_out_of_range;
                }
            }
            if (rest.kind != Match::Kind::none) {
                return rest;
            }
        }
    }
    return node.optional ? match(pattern.subspan(1), nodes) : Match{};
}

} // namespace kv408
