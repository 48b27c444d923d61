#pragma once

/// Where lies what this build has made. A program has linked in those that its CMakeLists.txt
/// names: the same compiled tests run with and without the sanitizers, each on the programs of its
/// build.
namespace kv408::place {

extern const char* const programs;         ///< the folder of kv408, kv408-demo and kv408-doctor
extern const char* const plugins;          ///< the folder of the tests' own plugins for Qt
extern const char* const umockdev_preload; ///< umockdev's replacements of the C library's functions
extern const char* const simulated_library; ///< the simulated instrument as a bridge library
extern const char* const hostile_folder; ///< the folder of the bridge library that can behave badly
extern const char* const needy_library;  ///< one that needs another that is nowhere
extern const char* const failing_library; ///< one that is whole and fails
extern const char* const lacking_library; ///< one that lacks functions
extern const char* const noting_library;  ///< one that notes how its functions are called

} // namespace kv408::place
