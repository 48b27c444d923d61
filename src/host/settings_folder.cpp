#include "host/settings_folder.h"

#include <cstdlib>

namespace kv408 {

#ifdef _WIN32

std::filesystem::path settings_folder() {
    const wchar_t* const folder = _wgetenv(L"APPDATA");
    return std::filesystem::path(folder == nullptr ? L"." : folder) / "kv408";
}

#else

namespace {

/// The path in the environment variable `name`; empty where it is not set.
std::filesystem::path path_in(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::filesystem::path application_data() {
    if (auto folder = path_in("APPDATA"); !folder.empty()) {
        return folder;
    }
    if (auto folder = path_in("XDG_CONFIG_HOME"); folder.is_absolute()) {
        return folder;
    }
    const auto home = path_in("HOME");
    return (home.empty() ? std::filesystem::path("/") : home) / ".config";
}

} // namespace

std::filesystem::path settings_folder() {
    return application_data() / "kv408";
}

#endif

} // namespace kv408
