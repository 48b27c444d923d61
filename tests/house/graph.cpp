#include "house/graph.h"

#include <algorithm>
#include <vector>

namespace kv408::house {

namespace {

/// Follows the arrows of `graph` from `node`; the nodes on the way are in `path`. True when it
/// came back to one of them; `path` is then the circle, from its first node to itself.
bool runs_in_circle(const Graph& graph, const std::string& node, std::vector<std::string>& path,
                    std::set<std::string>& done) {
    const auto seen = std::find(path.begin(), path.end(), node);
    if (seen != path.end()) {
        path.erase(path.begin(), seen);
        path.push_back(node);
        return true;
    }
    const auto arrows = graph.find(node);
    if (done.contains(node) || arrows == graph.end()) {
        return false;
    }
    path.push_back(node);
    for (const std::string& next : arrows->second) {
        if (runs_in_circle(graph, next, path, done)) {
            return true;
        }
    }
    path.pop_back();
    done.insert(node);
    return false;
}

} // namespace

std::string circle_in(const Graph& graph) {
    std::set<std::string> done;
    for (const auto& [start, arrows] : graph) {
        std::vector<std::string> path;
        if (!runs_in_circle(graph, start, path, done)) {
            continue;
        }
        std::string circle;
        for (const std::string& node : path) {
            circle += circle.empty() ? node : " -> " + node;
        }
        return circle;
    }
    return {};
}

} // namespace kv408::house
