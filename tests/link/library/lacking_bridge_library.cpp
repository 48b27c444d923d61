// A library under test that exports one function of a bridge and lacks the nine others.

#include "link/bridge_functions.h"

#ifdef _WIN32
#define KV408_EXPORT __declspec(dllexport)
#else
#define KV408_EXPORT __attribute__((visibility("default")))
#endif

extern "C" KV408_EXPORT kv408::BridgeStatus KV408_BRIDGE_CALL SI_Close(kv408::Handle handle) {
    return handle == nullptr ? kv408::bridge_failed : kv408::bridge_success;
}
