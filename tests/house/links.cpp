#include "house/links.h"

#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace kv408::house {

namespace {

/// One call in a CMakeLists.txt: its name and its arguments.
struct Call {
    std::string name;
    std::vector<std::string> arguments;
};

/// One library named on a link line.
struct Link {
    std::string file;    ///< the CMakeLists.txt
    std::string from;    ///< node that links
    std::string library; ///< what it names
};

/// The calls of `file` in their order; none unless it is the CMakeLists.txt of a folder of src/.
std::vector<Call> calls_of(const SourceFile& file) {
    if (!file.path.ends_with("/CMakeLists.txt") || folder_of(file.path, "src").empty()) {
        return {};
    }
    static const std::regex comment("#[^\n]*");
    static const std::regex call(R"(([a-z_0-9]+)\s*\(([^)]*)\))");
    const std::string text = std::regex_replace(file.text, comment, "");
    std::vector<Call> calls;
    for (auto match = std::sregex_iterator(text.begin(), text.end(), call);
         match != std::sregex_iterator(); ++match) {
        calls.push_back({(*match)[1].str(), words_of((*match)[2].str())});
    }
    return calls;
}

/// The node that each library of ours stands for: kv408_<folder> for the folder, a library that
/// add_library makes of one header with a row of its own for that header.
std::map<std::string, std::string> library_nodes(const Arrows& arrows, const SourceTree& tree) {
    std::map<std::string, std::string> nodes;
    for (const auto& [node, targets] : arrows) {
        nodes["kv408_" + node] = node;
    }
    for (const SourceFile& file : tree) {
        for (const Call& call : calls_of(file)) {
            if (call.name != "add_library" || call.arguments.size() != 3) {
                continue;
            }
            const std::string header = folder_of(file.path, "src") + "/" + call.arguments[2];
            if (arrows.contains(header)) {
                nodes[call.arguments[0]] = header;
            }
        }
    }
    return nodes;
}

/// Every library of ours that a link line of `tree` names, but for the common options.
std::vector<Link> links_of(const SourceTree& tree,
                           const std::map<std::string, std::string>& nodes) {
    std::vector<Link> links;
    for (const SourceFile& file : tree) {
        for (const Call& call : calls_of(file)) {
            const bool links_something =
                call.name == "kv408_library" || call.name == "target_link_libraries";
            if (!links_something || call.arguments.empty()) {
                continue;
            }
            const auto known = nodes.find(call.arguments[0]);
            const std::string from =
                known == nodes.end() ? folder_of(file.path, "src") : known->second;
            for (auto name = call.arguments.begin() + 1; name != call.arguments.end(); ++name) {
                if (name->starts_with("kv408_") && *name != "kv408_options") {
                    links.push_back({file.path, from, *name});
                }
            }
        }
    }
    return links;
}

} // namespace

Findings check_links(const Arrows& arrows, const SourceTree& tree) {
    const auto nodes = library_nodes(arrows, tree);
    Findings findings;
    for (const Link& link : links_of(tree, nodes)) {
        const auto to = nodes.find(link.library);
        if (to == nodes.end()) {
            findings.push_back(link.file + " names the unknown library " + link.library);
        } else if (!allowed(arrows, link.from, to->second)) {
            findings.push_back(link.file + " links " + link.from + " with " + link.library +
                               ": no arrow from " + link.from + " to " + to->second);
        }
    }
    return findings;
}

Findings check_linked(const Arrows& arrows, const SourceTree& tree) {
    const auto nodes = library_nodes(arrows, tree);
    Arrows linked;
    for (const auto& [node, targets] : arrows) {
        linked[node]; // also a node without link lines may include itself
    }
    for (const Link& link : links_of(tree, nodes)) {
        if (const auto to = nodes.find(link.library); to != nodes.end()) {
            linked[link.from].insert(to->second);
        }
    }
    Findings findings;
    for (const SourceFile& file : tree) {
        const std::string path = path_in_src(file);
        for (const std::string& include : includes_of(file)) {
            const std::string from = node_of(path, arrows);
            if (!path.empty() && !allowed(linked, from, node_of(include, arrows))) {
                findings.push_back(file.path + " includes " + include + ", but no link line of " +
                                   from + " names its library");
            }
        }
    }
    return findings;
}

} // namespace kv408::house
