#pragma once

#include <map>
#include <set>
#include <string>

namespace kv408::house {

/// Nodes by name, each with those that it points to.
using Graph = std::map<std::string, std::set<std::string>>;

/// The first circle in `graph` as "a -> b -> a"; empty when there is none.
[[nodiscard]] std::string circle_in(const Graph& graph);

} // namespace kv408::house
