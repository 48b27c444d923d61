#include "host/system_error.h"

#ifdef _WIN32
#include <array>
#include <string_view>

#include "host/text_encoding.h"
#include <windows.h>
#endif

namespace kv408 {

#ifdef _WIN32

std::string reason_of(const std::error_code& error) {
    if (error.category() != std::system_category()) {
        return error.message();
    }
    std::array<wchar_t, 1024> text = {};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                            FORMAT_MESSAGE_MAX_WIDTH_MASK, // no line ends within
                                        nullptr, static_cast<DWORD>(error.value()), 0, text.data(),
                                        static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view words(text.data(), length);
    while (words.ends_with(L' ')) {
        words.remove_suffix(1);
    }
    if (words.empty()) {
        std::string number = "system error ";
        number += std::to_string(error.value());
        return number;
    }
    return from_wide(words);
}

std::error_code latest_error() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

#else

std::string reason_of(const std::error_code& error) {
    return error.message();
}

#endif

} // namespace kv408
