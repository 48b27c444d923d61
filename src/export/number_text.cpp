#include "export/number_text.h"

#include <array>
#include <charconv>

namespace kv408 {

std::string number_text(double value) {
    constexpr int digits = 12;
    std::array<char, 32> text = {};
    // Zero without the sign that a rounding may leave.
    const auto end = std::to_chars(text.data(), text.data() + text.size(),
                                   value == 0.0 ? 0.0 : value, std::chars_format::general, digits);
    return {text.data(), end.ptr};
}

} // namespace kv408
