#include "link/shared_library.h"

#ifdef _WIN32
#include <array>
#include <bit>
#include <filesystem>
#include <string_view>

#include "host/system_error.h"
#include "host/text_encoding.h"
#include <windows.h>
#else
#include <cerrno>
#include <system_error>

#include <dlfcn.h>
#endif

namespace kv408 {

#ifdef _WIN32

SharedLibrary::SharedLibrary(const std::string& name) {
    // Without a box of the system's own where the file is no library.
    DWORD mode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
    // Whoever starts the program in a folder does not mean to run what lies there. Any other folder
    // takes its place in the search, here the program's own, which comes first anyway; Wine takes
    // an empty one for the current folder.
    std::array<wchar_t, 32768> program = {}; // the longest path there is
    const DWORD length =
        GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size() - 1));
    const std::filesystem::path file(std::wstring_view(program.data(), length));
    SetDllDirectoryW(file.parent_path().c_str());
    module_ = LoadLibraryW(to_wide(name).c_str());
    if (module_ == nullptr) {
        problem_ = reason_of(latest_error());
        // The sentence about a file that is no library leaves its name open.
        constexpr std::string_view gap = "%1";
        if (const auto at = problem_.find(gap); at != std::string::npos) {
            problem_.replace(at, gap.size(), name);
        }
    }
    SetThreadErrorMode(mode, nullptr);
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
