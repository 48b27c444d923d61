#include "link/library_bridge.h"

#include <array>
#include <bit>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/path_text.h"
#include "link/shared_library.h"
#include "support/places.h"
#include "support/temporary_folder.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace kv408 {
namespace {

TEST(ByteString, EndsAtAZeroOr256Characters) {
    const std::vector<Byte> short_text = {'l', 'm', '4', 0, 'x'};
    EXPECT_EQ(bytestostring(short_text), "lm4");
    const std::vector<Byte> unended = {'a', 'b'};
    EXPECT_EQ(bytestostring(unended), "ab");
    const std::vector<Byte> full(257, 'z');
    EXPECT_EQ(bytestostring(full), std::string(256, 'z'));
    EXPECT_EQ(bytestostring({}), "");
    const std::vector<Byte> any = {1, 10, 255, 128, 0};
    EXPECT_EQ(bytestostring(any), "\x01\x0A\xFF\x80");
}

TEST(LibraryBridge, ReachesTheInstrumentThroughALibraryFoundByName) {
    LibraryBridge bridge;
    ASSERT_EQ(bridge.trouble(), "");
    const Counted devices = bridge.count_devices();
    ASSERT_EQ(devices.status, bridge_success);
    ASSERT_EQ(devices.count, 1U);
    const SerialNumber serial = bridge.serial_number(0);
    ASSERT_EQ(serial.status, bridge_success);
    EXPECT_EQ(serial.text.substr(0, 6), "lm4rxa");

    ASSERT_EQ(bridge.open(0), bridge_success);
    ASSERT_EQ(bridge.set_speed(833000), bridge_success);
    ASSERT_EQ(bridge.set_time_out(1000), bridge_success);
    ASSERT_EQ(bridge.flush(), bridge_success);
    const std::array<Byte, 8> check = {4, 8, 0, 0, 1, 0, 255, 8};
    ASSERT_EQ(bridge.write(check), bridge_success);
    std::array<Byte, 1> reply = {};
    const Counted read = bridge.read(reply);
    ASSERT_EQ(read.status, bridge_success);
    EXPECT_EQ(read.count, 1U);
    EXPECT_EQ(reply[0], 6);
    const Counted waiting = bridge.waiting();
    ASSERT_EQ(waiting.status, bridge_success);
    EXPECT_EQ(waiting.count, 0U);
    EXPECT_EQ(bridge.close(), bridge_success);
}

/// Asks all ten operations of `bridge` and expects each to fail.
void expect_every_operation_to_fail(Bridge& bridge) {
    std::array<Byte, 8> bytes = {};
    EXPECT_EQ(bridge.count_devices().status, bridge_failed);
    EXPECT_EQ(bridge.serial_number(0).status, bridge_failed);
    EXPECT_EQ(bridge.open(0), bridge_failed);
    EXPECT_EQ(bridge.close(), bridge_failed);
    EXPECT_EQ(bridge.set_speed(833000), bridge_failed);
    EXPECT_EQ(bridge.set_time_out(1), bridge_failed);
    EXPECT_EQ(bridge.flush(), bridge_failed);
    EXPECT_EQ(bridge.write(bytes), bridge_failed);
    EXPECT_EQ(bridge.read(bytes).status, bridge_failed);
    EXPECT_EQ(bridge.waiting().status, bridge_failed);
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

TEST(LibraryBridge, CallsTheLibraryWithItsHandleItsBufferAndItsOptions) {
    std::vector<std::string> calls;
    const SharedLibrary library(place::noting_library);
    const auto note_into =
        std::bit_cast<void (*)(std::vector<std::string>*)>(library.address("note_into"));
    ASSERT_NE(note_into, nullptr);
    note_into(&calls);
    LibraryBridge bridge(place::noting_library);
    ASSERT_EQ(bridge.trouble(), "");
    std::array<Byte, 8> bytes = {4, 8, 0, 0, 1, 0, 255, 8};
    EXPECT_EQ(bridge.count_devices().count, 3U);
    EXPECT_EQ(bridge.serial_number(2).text, std::string(256, 'x'));
    EXPECT_EQ(bridge.flush(), bridge_success); // before anything is open
    EXPECT_EQ(bridge.open(2), bridge_success);
    EXPECT_EQ(bridge.set_speed(833000), bridge_success);
    EXPECT_EQ(bridge.set_time_out(100), bridge_success);
    EXPECT_EQ(bridge.flush(), bridge_success);
    EXPECT_EQ(bridge.write(bytes), bridge_success);
    const Counted read = bridge.read(bytes);
    EXPECT_EQ(read.status, bridge_read_timed_out);
    EXPECT_EQ(read.count, 1U);
    EXPECT_EQ(bytes[0], 77);
    EXPECT_EQ(bridge.waiting().count, 1300U);
    EXPECT_EQ(bridge.close(), bridge_success);
    note_into(nullptr);
    EXPECT_EQ(calls,
              (std::vector<std::string>{
                  "SI_GetNumDevices", "SI_GetProductString 2 0", "SI_FlushBuffers 1: 1 1",
                  "SI_Open 2", "SI_SetBaudRate 4711: 833000", "SI_SetTimeouts 100 100",
                  "SI_FlushBuffers 4711: 1 1", "SI_Write 4711: 8 bytes from 4, no overlap",
                  "SI_Read 4711: 8 bytes, no overlap", "SI_CheckRXQueue 4711", "SI_Close 4711"}));
}

TEST(LibraryBridge, TheSimulatedLibraryKnowsItsHandleAndItsOption) {
    const SharedLibrary library(bridge_library_name);
    const auto function = [&]<typename Function>(const char* name, Function& found) {
        found = std::bit_cast<Function>(library.address(name));
        ASSERT_NE(found, nullptr) << name;
    };
    BridgeFunctions functions;
    function("SI_GetProductString", functions.SI_GetProductString);
    function("SI_Open", functions.SI_Open);
    function("SI_Close", functions.SI_Close);
    function("SI_SetBaudRate", functions.SI_SetBaudRate);
    function("SI_FlushBuffers", functions.SI_FlushBuffers);
    std::array<Byte, product_string_size> text = {};
    EXPECT_EQ(functions.SI_GetProductString(0, text.data(), si_return_serial_number),
              bridge_success);
    EXPECT_EQ(functions.SI_GetProductString(0, text.data(), 1), bridge_failed);
    Handle first = nullptr;
    ASSERT_EQ(functions.SI_Open(0, &first), bridge_success);
    EXPECT_EQ(functions.SI_Close(first), bridge_success);
    EXPECT_EQ(functions.SI_Close(first), bridge_failed);
    Handle second = nullptr;
    ASSERT_EQ(functions.SI_Open(0, &second), bridge_success);
    EXPECT_NE(second, first);
    for (Handle stale : {first, Handle(nullptr)}) {
        EXPECT_EQ(functions.SI_SetBaudRate(stale, 833000), bridge_failed);
        EXPECT_EQ(functions.SI_FlushBuffers(stale, 1, 1), bridge_failed);
        EXPECT_EQ(functions.SI_Close(stale), bridge_failed);
    }
    EXPECT_EQ(functions.SI_Close(second), bridge_success);
}

TEST(LibraryBridge, WithoutASymbolEveryOperationFailsAndTheMissingOnesAreNamed) {
    LibraryBridge bridge(place::lacking_library);
    expect_every_operation_to_fail(bridge);
    EXPECT_NE(bridge.trouble().find("lacks the function SI_GetNumDevices, SI_GetProductString, "
                                    "SI_Open, SI_SetBaudRate, SI_SetTimeouts, SI_FlushBuffers, "
                                    "SI_Write, SI_Read, SI_CheckRXQueue"),
              std::string::npos)
        << bridge.trouble();
}

} // namespace
} // namespace kv408
