#pragma once

#include <string>

namespace kv408 {

/// A shared library loaded at run time through the system's ordinary search; unloaded at the end.
class SharedLibrary {
public:
    /// Loads the library called `name`; on failure `problem()` tells why.
    explicit SharedLibrary(const std::string& name);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    /// The address of the exported function `symbol`; null when the library is not loaded or has
    /// none of that name.
    [[nodiscard]] void* address(const char* symbol) const;

    /// Why the library could not be loaded, in the loader's own words; empty when it is loaded.
    [[nodiscard]] const std::string& problem() const { return problem_; }

    /// False when the search found no library of that name; always true on Windows, which does not
    /// tell that from a library that needs another one.
    [[nodiscard]] bool found() const { return found_; }

private:
    void* module_ = nullptr;
    std::string problem_;
    bool found_ = true;
};

} // namespace kv408
