#pragma once

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
/// Where the library or one of its functions is missing every operation fails with `si_failed`
/// and `trouble()` says why.
class LibraryBridge : public Bridge {
public:
    /// Loads the library called `name`, a plain name through the system's search or a path.
    explicit LibraryBridge(const std::string& name = bridge_library_name);

    BridgeStatus SI_GetNumDevices(Dword& count) override;
    BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                     Dword option) override;
    BridgeStatus SI_Open(Dword index, Handle& handle) override;
    BridgeStatus SI_Close(Handle handle) override;
    BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) override;
    BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) override;
    BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) override;
    BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) override;
    BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) override;
    BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) override;
    [[nodiscard]] std::string trouble() const override { return trouble_; }
    [[nodiscard]] std::string diagnosis() override;

    /// False when the system's search found no library of that name.
    [[nodiscard]] bool library_found() const { return library_.found(); }

    /// Why the library could not be loaded, in the loader's own words; empty when it is loaded.
    [[nodiscard]] const std::string& loaders_words() const { return library_.problem(); }

private:
    /// Looks `symbol` up into `function`, or notes that it is missing.
    template <typename Function>
    void look_up(const char* symbol, Function& function);
    [[nodiscard]] std::string listed_devices();

    std::string name_;
    SharedLibrary library_;
    BridgeFunctions functions_;
    std::string trouble_;
};

} // namespace kv408
