#include "link/shared_library.h"

#ifdef _WIN32
#include <bit>
#include <windows.h>
#else
#include <cerrno>
#include <system_error>

#include <dlfcn.h>
#endif

namespace kv408 {

#ifdef _WIN32

namespace {

/// The system's text for its error `code`, without the line end that it carries.
std::string system_error_text(DWORD code) {
    char text[512] = {};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, text, sizeof text, nullptr);
    std::string result(text, length);
    while (!result.empty() && (result.back() == '\n' || result.back() == '\r')) {
        result.pop_back();
    }
    return result.empty() ? "system error " + std::to_string(code) : result;
}

} // namespace

SharedLibrary::SharedLibrary(const std::string& name) {
    module_ = LoadLibraryA(name.c_str());
    if (module_ == nullptr) {
        problem_ = system_error_text(GetLastError());
    }
}

SharedLibrary::~SharedLibrary() {
    if (module_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(module_));
    }
}

void* SharedLibrary::address(const char* symbol) const {
    if (module_ == nullptr) {
        return nullptr;
    }
    return std::bit_cast<void*>(GetProcAddress(static_cast<HMODULE>(module_), symbol));
}

#else

SharedLibrary::SharedLibrary(const std::string& name)
    : module_(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (module_ == nullptr) {
        const char* reason = dlerror();
        problem_ = reason != nullptr ? reason : "unknown reason";
        // The loader has no other way to say so: it names the file first, which is another one
        // where a library lacks one that it needs, and ends with the system's text in the user's
        // language.
        found_ = !(problem_.starts_with(name + ": ") &&
                   problem_.ends_with(std::generic_category().message(ENOENT)));
    }
}

SharedLibrary::~SharedLibrary() {
    if (module_ != nullptr) {
        dlclose(module_);
    }
}

void* SharedLibrary::address(const char* symbol) const {
    return module_ != nullptr ? dlsym(module_, symbol) : nullptr;
}

#endif

} // namespace kv408
