#pragma once

#include <concepts>
#include <string>
#include <vector>

namespace kv408 {

/// Things that should be equal and are not, each in words.
class Differences {
public:
    /// Notes it when `is` is not `should_be`; `what` names it.
    template <typename Is, typename ShouldBe>
    void compare(const std::string& what, const Is& is, const ShouldBe& should_be) {
        if (!(is == should_be)) {
            texts_.push_back(what + " is " + text(is) + ", should be " + text(should_be));
        }
    }

    /// Notes `what` unless `holds`.
    void expect(const std::string& what, bool holds) {
        if (!holds) {
            texts_.push_back(what);
        }
    }

    [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }

private:
    template <typename Value>
    static std::string text(const Value& value) {
        if constexpr (std::integral<Value>) {
            return std::to_string(value);
        } else {
            std::string quoted = "\"";
            return quoted.append(value).append("\"");
        }
    }

    std::vector<std::string> texts_;
};

} // namespace kv408
