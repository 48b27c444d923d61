#include "export/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kv408 {

std::string number_text(double value) {
    constexpr int digits = 12;
    std::array<char, 32> text = {};
    // Zero without the sign that a rounding may leave.
    const auto end = std::to_chars(text.data(), text.data() + text.size(),
                                   value == 0.0 ? 0.0 : value, std::chars_format::general, digits);
    return {text.data(), end.ptr};
}

std::string plain_text(double value, int digits) {
    constexpr std::size_t longest = 330; // the largest double has 309 digits
    const double size = std::fabs(value);
    const int before = size < 1.0 ? 0 : 1 + static_cast<int>(std::floor(std::log10(size)));
    std::array<char, longest> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::fixed, std::max(digits - before, 0));
    return {text.data(), end.ptr};
}

} // namespace kv408
