#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace kv408 {

/// The bytes of a fuzzer's input, taken from the front; zeros when there are none left.
class FuzzInput {
public:
    explicit FuzzInput(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    /// Whether all has been taken.
    [[nodiscard]] bool empty() const { return bytes_.empty(); }

    /// The next byte.
    std::uint8_t byte() {
        if (bytes_.empty()) {
            return 0;
        }
        const std::uint8_t first = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return first;
    }

    /// A number 0 .. `count` - 1; `count` 1..256.
    std::size_t below(std::size_t count) { return byte() % count; }

    /// What stands before the next line break, which is taken too.
    std::string line() {
        std::string text;
        while (!bytes_.empty()) {
            const auto next = static_cast<char>(byte());
            if (next == '\n') {
                break;
            }
            text.push_back(next);
        }
        return text;
    }

private:
    std::span<const std::uint8_t> bytes_;
};

} // namespace kv408
