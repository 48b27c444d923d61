#pragma once

// The link lines of the CMake files below src/, read against the arrows of includes: a library
// that is not linked cannot be used by accident, so the lines have to say no more than the table,
// and no less than the includes.

#include "house/arrows.h"
#include "house/source_tree.h"

namespace kv408::house {

/// Every link line of a CMakeLists.txt below src/ that names a library of ours for which `arrows`
/// has no arrow, or that is not known.
[[nodiscard]] Findings check_links(const Arrows& arrows, const SourceTree& tree);

/// Every include under src/ from a library that no link line of the including folder names.
[[nodiscard]] Findings check_linked(const Arrows& arrows, const SourceTree& tree);

} // namespace kv408::house
