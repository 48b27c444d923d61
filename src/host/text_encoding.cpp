#include "host/text_encoding.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace kv408 {

#ifdef _WIN32

namespace {

/// The wide characters of `text`, which is in code page `code_page`.
std::wstring widened(std::string_view text, UINT code_page) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(code_page, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(code_page, 0, text.data(), length, wide.data(), size);
    return wide;
}

/// `wide` in code page `code_page`.
std::string narrowed(std::wstring_view wide, UINT code_page) {
    // A letter that only resembles the one meant would name another folder. UTF-8 has all letters
    // and does not accept the flag.
    const DWORD flags = code_page == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(wide.size());
    const int size =
        WideCharToMultiByte(code_page, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(code_page, flags, wide.data(), length, text.data(), size, nullptr, nullptr);
    return text;
}

} // namespace

std::string from_wide(std::wstring_view wide) {
    return narrowed(wide, CP_UTF8);
}

std::wstring to_wide(std::string_view text) {
    return widened(text, CP_UTF8);
}

std::string from_code_page(std::string bytes) {
    return from_wide(widened(bytes, CP_ACP));
}

std::string to_code_page(std::string text) {
    return narrowed(to_wide(text), CP_ACP);
}

#else

std::string from_code_page(std::string bytes) {
    return bytes;
}

std::string to_code_page(std::string text) {
    return text;
}

#endif

} // namespace kv408
