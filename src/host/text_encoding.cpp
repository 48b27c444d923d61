#include "host/text_encoding.h"

#ifdef _WIN32
#include <string_view>
#include <windows.h>
#endif

namespace kv408 {

#ifdef _WIN32

namespace {

/// `text` of code page `from` in code page `to`, by way of the system's wide characters.
std::string converted(std::string_view text, UINT from, UINT to) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(from, 0, text.data(), length, nullptr, 0)),
        L'\0');
    const int characters = static_cast<int>(wide.size());
    MultiByteToWideChar(from, 0, text.data(), length, wide.data(), characters);
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(to, 0, wide.data(), characters,
                                                                   nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(to, 0, wide.data(), characters, bytes.data(),
                        static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

} // namespace

std::string from_code_page(std::string bytes) {
    return converted(bytes, CP_ACP, CP_UTF8);
}

std::string to_code_page(std::string text) {
    return converted(text, CP_UTF8, CP_ACP);
}

#else

std::string from_code_page(std::string bytes) {
    return bytes;
}

std::string to_code_page(std::string text) {
    return text;
}

#endif

std::string path_text(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace kv408
