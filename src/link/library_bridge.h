#pragma once

#include <bit>
#include <span>
#include <string>

#include "link/bridge.h"
#include "link/bridge_functions.h"
#include "link/shared_library.h"

namespace kv408 {

/// File name of the bridge library on this system.
#ifdef _WIN32
inline constexpr const char* bridge_library_name = "SiUSBXp.dll";
#else
inline constexpr const char* bridge_library_name = "libSiUSBXp.so";
#endif

/// The bridge that passes every operation on to the bridge library, loaded at run time by name.
/// Where the library or one of its functions is missing every operation fails with `bridge_failed`
/// and `trouble()` says why.
class LibraryBridge : public Bridge {
public:
    /// Loads the library called `name`, a plain name through the system's search or a path.
    explicit LibraryBridge(const std::string& name = bridge_library_name);

    Counted count_devices() override;
    SerialNumber serial_number(std::uint32_t index) override;
    BridgeStatus open(std::uint32_t index) override;
    BridgeStatus close() override;
    BridgeStatus set_speed(std::uint32_t baud) override;
    BridgeStatus set_time_out(std::uint32_t milliseconds) override;
    BridgeStatus flush() override;
    BridgeStatus write(std::span<const Byte> bytes) override;
    Counted read(std::span<Byte> bytes) override;
    Counted waiting() override;
    [[nodiscard]] std::string trouble() const override { return trouble_; }

    /// False when the system's search found no library of that name.
    [[nodiscard]] bool library_found() const { return library_.found(); }

    /// Why the library could not be loaded, in the loader's own words; empty when it is loaded.
    [[nodiscard]] const std::string& loaders_words() const { return library_.problem(); }

private:
    /// Looks `symbol` up into `function`, or notes that it is missing.
    template <typename Function>
    void look_up(const char* symbol, Function& function);
    /// Calls the library's `function` where the library can be used.
    template <typename Function, typename... Arguments>
    BridgeStatus call(Function function, Arguments... arguments) {
        return trouble_.empty() ? function(arguments...) : bridge_failed;
    }

    std::string name_;
    SharedLibrary library_;
    BridgeFunctions functions_;
    /// Handle of the device; the value 1 before one is opened.
    Handle devhandle_ = std::bit_cast<Handle>(std::uintptr_t{1});
    std::string trouble_;
};

/// The text in a zero-terminated buffer: one character per byte, at most 256.
[[nodiscard]] std::string bytestostring(std::span<const Byte> buffer);

} // namespace kv408
