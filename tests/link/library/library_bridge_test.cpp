#include "link/library_bridge.h"

#include <array>
#include <fstream>

#include <gtest/gtest.h>

#include "host/path_text.h"
#include "link/device_link.h"
#include "support/temporary_folder.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace kv408 {
namespace {

TEST(LibraryBridge, ReachesTheInstrumentThroughALibraryFoundByName) {
    LibraryBridge bridge;
    ASSERT_EQ(bridge.trouble(), "");
    Dword count = 0;
    ASSERT_EQ(bridge.SI_GetNumDevices(count), si_success);
    ASSERT_EQ(count, 1U);
    std::array<Byte, product_string_size> text = {};
    ASSERT_EQ(bridge.SI_GetProductString(0, text, si_return_serial_number), si_success);
    EXPECT_EQ(bytestostring(text).substr(0, 6), "lm4rxa");

    Handle handle = nullptr;
    ASSERT_EQ(bridge.SI_Open(0, handle), si_success);
    ASSERT_EQ(bridge.SI_SetBaudRate(handle, 833000), si_success);
    ASSERT_EQ(bridge.SI_SetTimeouts(1000, 1000), si_success);
    ASSERT_EQ(bridge.SI_FlushBuffers(handle, 1, 1), si_success);
    const std::array<Byte, 8> check = {4, 8, 0, 0, 1, 0, 255, 8};
    Dword written = 0;
    ASSERT_EQ(bridge.SI_Write(handle, check, written), si_success);
    EXPECT_EQ(written, 8U);
    std::array<Byte, 1> reply = {};
    Dword read = 0;
    ASSERT_EQ(bridge.SI_Read(handle, reply, read), si_success);
    EXPECT_EQ(read, 1U);
    EXPECT_EQ(reply[0], 6);
    Dword waiting = 99;
    Dword queue_status = 0;
    ASSERT_EQ(bridge.SI_CheckRXQueue(handle, waiting, queue_status), si_success);
    EXPECT_EQ(waiting, 0U);
    EXPECT_EQ(bridge.SI_Close(handle), si_success);
}

/// Asks all ten operations of `bridge` and expects each to fail.
void expect_every_operation_to_fail(Bridge& bridge) {
    Dword number = 0;
    Handle handle = nullptr;
    std::array<Byte, product_string_size> text = {};
    std::array<Byte, 8> bytes = {};
    EXPECT_NE(bridge.SI_GetNumDevices(number), si_success);
    EXPECT_NE(bridge.SI_GetProductString(0, text, 0), si_success);
    EXPECT_NE(bridge.SI_Open(0, handle), si_success);
    EXPECT_NE(bridge.SI_Close(&number), si_success);
    EXPECT_NE(bridge.SI_SetBaudRate(handle, 833000), si_success);
    EXPECT_NE(bridge.SI_SetTimeouts(1, 1), si_success);
    EXPECT_NE(bridge.SI_FlushBuffers(handle, 1, 1), si_success);
    EXPECT_NE(bridge.SI_Write(handle, bytes, number), si_success);
    EXPECT_NE(bridge.SI_Read(handle, bytes, number), si_success);
    EXPECT_NE(bridge.SI_Read(handle, bytes, number), si_read_timed_out);
    EXPECT_NE(bridge.SI_CheckRXQueue(handle, number, number), si_success);
}

TEST(LibraryBridge, WithoutTheLibraryEveryOperationFailsAndTheReasonIsTold) {
    LibraryBridge bridge("libNoSuchBridge.so");
    expect_every_operation_to_fail(bridge);
    EXPECT_NE(bridge.trouble().find("libNoSuchBridge.so could not be loaded: "), std::string::npos);
}

TEST(LibraryBridge, AFileThatIsNoLibraryIsToldByItsName) {
    const TemporaryFolder folder;
    const std::string name = text_of_path(folder.path() / "text.dll");
    std::ofstream(path_of_text(name)) << "no library";
    LibraryBridge bridge(name);
    expect_every_operation_to_fail(bridge);
    const std::string told = "The bridge library " + name + " could not be loaded: ";
    ASSERT_EQ(bridge.trouble().substr(0, told.size()), told);
    EXPECT_NE(bridge.trouble().find(name, told.size()), std::string::npos) << bridge.trouble();
    EXPECT_EQ(bridge.trouble().find("%1"), std::string::npos) << bridge.trouble();
}

TEST(LibraryBridge, ThePathOfALibraryForgesNoLine) {
    const TemporaryFolder folder;
    const std::string name = text_of_path(folder.path()) + "/a\xE2\x80\xAE.dll";
    std::ofstream(path_of_text(name)) << "no library";
    LibraryBridge bridge(name);
    expect_every_operation_to_fail(bridge);
    const std::string shown = text_of_path(folder.path()) + R"(/a\xe2\x80\xae.dll)";
    EXPECT_NE(bridge.trouble().find("The bridge library " + shown + " could not be loaded: "),
              std::string::npos)
        << bridge.trouble();
    EXPECT_EQ(bridge.trouble().find("\xE2\x80\xAE"), std::string::npos) << bridge.trouble();
}

#ifdef _WIN32

/// The file of the module `module` of this process; of the program itself without one.
std::filesystem::path file_of(HMODULE module) {
    std::array<wchar_t, 1024> name = {};
    GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size()));
    return name.data();
}

/// A library under a name of its own in some folder, as long as it lives.
class Planted {
public:
    Planted(const std::filesystem::path& library, const std::filesystem::path& folder)
        : path_(folder / name) {
        std::filesystem::copy_file(library, path_);
    }
    ~Planted() {
        std::error_code error;
        std::filesystem::remove(path_, error);
    }
    Planted(const Planted&) = delete;
    Planted& operator=(const Planted&) = delete;

    static constexpr const char* name = "planted408.dll";

private:
    std::filesystem::path path_;
};

TEST(LibraryBridge, TheCurrentFolderIsNotSearchedButTheProgramsAndThePath) {
    std::filesystem::path library;
    {
        const LibraryBridge bridge;
        ASSERT_EQ(bridge.trouble(), "");
        library = file_of(GetModuleHandleW(L"SiUSBXp.dll"));
    }
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    {
        const Planted planted(library, folder.path());
        EXPECT_NE(LibraryBridge(Planted::name).trouble(), "") << "taken from the current folder";
        const std::wstring path = folder.path().native() + L";" + _wgetenv(L"PATH");
        SetEnvironmentVariableW(L"PATH", path.c_str());
        EXPECT_EQ(LibraryBridge(Planted::name).trouble(), "") << "it is in the PATH";
        SetEnvironmentVariableW(L"PATH", path.c_str() + folder.path().native().size() + 1);
    }
    {
        const Planted installed(library, file_of(nullptr).parent_path());
        EXPECT_EQ(LibraryBridge(Planted::name).trouble(), "") << "it is beside the program";
    }
    std::filesystem::current_path(before);
}

#endif

TEST(LibraryBridge, WithoutASymbolEveryOperationFailsAndTheMissingOnesAreNamed) {
    LibraryBridge bridge(KV408_LACKING_LIBRARY);
    expect_every_operation_to_fail(bridge);
    EXPECT_NE(bridge.trouble().find("lacks the function SI_GetNumDevices, SI_GetProductString, "
                                    "SI_Open, SI_SetBaudRate, SI_SetTimeouts, SI_FlushBuffers, "
                                    "SI_Write, SI_Read, SI_CheckRXQueue"),
              std::string::npos)
        << bridge.trouble();
}

} // namespace
} // namespace kv408
