#pragma once

#include <cstddef>

#include "house/source_tree.h"

namespace kv408::house {

/// Lines that a source file may have. Past it: split by reason to change.
inline constexpr std::size_t most_lines = 450;

/// Code under src/ of more than `most_lines` lines.
[[nodiscard]] Findings check_lengths(const SourceTree& tree);

/// Marks of unfinished work in code, and tests that are switched off.
[[nodiscard]] Findings check_unfinished(const SourceTree& tree);

/// Includes of Qt under src/ and tests/ outside the two folders of the window, src/ui and tests/ui.
[[nodiscard]] Findings check_qt(const SourceTree& tree);

/// Folders of src/ that have no folder of tests with at least one test in it.
[[nodiscard]] Findings check_tested(const SourceTree& tree);

/// Addresses on the network and names of hosts in what is no code: scripts take a mirror from the
/// machine's own configuration. Names of formats that look like an address are none, and neither is
/// a person's address for mail in angle brackets.
[[nodiscard]] Findings check_hosts(const SourceTree& tree);

} // namespace kv408::house
