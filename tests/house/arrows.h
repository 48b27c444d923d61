#pragma once

// The arrows of includes: which folder of src/ may include from which. They are written down once,
// in the table of CONTRIBUTING.md, and everything else is read against it.

#include <string>
#include <string_view>

#include "house/graph.h"
#include "house/source_tree.h"

namespace kv408::house {

/// What each node may include. A node is a folder of src/ ("link") or a single header that has a
/// row of its own ("panel/controls.h"). Every node may also include itself, and a folder those of
/// its own headers that are nodes.
using Arrows = Graph;

/// The table in `markdown`: the first one of two columns whose first is headed "folder".
/// Backticks are ignored; "nothing" stands for an empty cell. No table gives no arrows.
[[nodiscard]] Arrows arrow_table(std::string_view markdown);

/// The node of `path`, which counts from src/ on ("panel/controls.h"): the header itself where
/// `arrows` has a row for it, else its folder.
[[nodiscard]] std::string node_of(const std::string& path, const Arrows& arrows);

/// True when something in node `from` may include something in node `to`.
[[nodiscard]] bool allowed(const Arrows& arrows, const std::string& from, const std::string& to);

/// What is wrong with the table itself: a row for something that is not in `tree`, a folder of
/// src/ without a row, a cell that names no row, arrows that go round in a circle.
[[nodiscard]] Findings check_table(const Arrows& arrows, const SourceTree& tree);

/// Every `#include "..."` under src/ that goes where no arrow does, or that names no file there.
[[nodiscard]] Findings check_includes(const Arrows& arrows, const SourceTree& tree);

/// Every arrow of a row along which nothing under src/ includes anything: it would let in what
/// nobody has asked for.
[[nodiscard]] Findings check_unused(const Arrows& arrows, const SourceTree& tree);

/// Files under src/ that include each other in a circle.
[[nodiscard]] Findings check_circles(const SourceTree& tree);

} // namespace kv408::house
