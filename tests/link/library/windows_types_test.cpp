// The bridge's types and calling convention against those of the system's own headers.

#ifdef _WIN32

#include <bit>
#include <type_traits>

#include <gtest/gtest.h>

#include "link/bridge_functions.h"
#include <windows.h>

namespace kv408 {
namespace {

/// Whether a pointer `Ours` can be handed over where the system's headers say `Theirs`.
template <typename Ours, typename Theirs>
constexpr bool as_wide =
    sizeof(Ours) == sizeof(Theirs) &&
    alignof(Ours) == alignof(Theirs) && std::is_unsigned_v<Ours> == std::is_unsigned_v<Theirs>;

static_assert(std::is_same_v<Handle, HANDLE>);
static_assert(sizeof(Handle) == 8, "the program is built for x86-64");
static_assert(as_wide<Dword, DWORD>);
static_assert(as_wide<Byte, BYTE>);
static_assert(as_wide<BridgeStatus, int>);
static_assert(std::is_same_v<decltype(BridgeFunctions::SI_Close), BridgeStatus(WINAPI*)(HANDLE)>);

/// A function of the system's with the system's convention, reached through one of ours.
TEST(WindowsTypes, AFunctionOfTheSystemIsCalledThroughOurConvention) {
    using Call = Handle(KV408_BRIDGE_CALL*)(Handle security, BridgeStatus manual, BridgeStatus set,
                                            const void* name);
    HANDLE(WINAPI * create)(LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR) = &CreateEventA;
    // Bit by bit, as a looked-up address becomes a function.
    const auto call = std::bit_cast<Call>(create);
    Handle const event = call(nullptr, 1, 1, nullptr);
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_NE(CloseHandle(event), 0);
}

} // namespace
} // namespace kv408

#endif
