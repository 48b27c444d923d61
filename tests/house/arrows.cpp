#include "house/arrows.h"

#include <algorithm>
#include <set>
#include <vector>

namespace kv408::house {

namespace {

/// The folder that `node` is or lies in.
std::string folder_of_node(const std::string& node) {
    return node.substr(0, node.find('/'));
}

/// The cells of a row of a Markdown table, trimmed and without backticks; none for other lines.
std::vector<std::string> cells_of(const std::string& line) {
    std::string row = trimmed(line);
    if (row.size() < 2 || row.front() != '|' || row.back() != '|') {
        return {};
    }
    std::erase(row, '`');
    std::vector<std::string> cells;
    std::size_t begin = 1;
    for (std::size_t end = row.find('|', begin); end != std::string::npos;
         begin = end + 1, end = row.find('|', begin)) {
        cells.push_back(trimmed(std::string_view(row).substr(begin, end - begin)));
    }
    return cells;
}

} // namespace

Arrows arrow_table(std::string_view markdown) {
    Arrows arrows;
    bool in_table = false;
    for (const std::string& line : lines_of(markdown)) {
        const std::vector<std::string> cells = cells_of(line);
        if (!in_table) {
            in_table = cells.size() == 2 && cells[0] == "folder";
            continue;
        }
        if (cells.size() != 2) {
            break;
        }
        if (cells[0].starts_with("-")) {
            continue;
        }
        std::vector<std::string> targets = words_of(cells[1]);
        std::erase(targets, "nothing");
        arrows[cells[0]].insert(targets.begin(), targets.end());
    }
    return arrows;
}

std::string node_of(const std::string& path, const Arrows& arrows) {
    return arrows.contains(path) ? path : folder_of_node(path);
}

bool allowed(const Arrows& arrows, const std::string& from, const std::string& to) {
    const auto row = arrows.find(from);
    if (row == arrows.end()) {
        return false;
    }
    const std::string folder = folder_of_node(to);
    return from == to || from == folder || row->second.contains(to) || row->second.contains(folder);
}

Findings check_table(const Arrows& arrows, const SourceTree& tree) {
    std::set<std::string> folders;
    std::set<std::string> nodes;
    for (const SourceFile& file : tree) {
        if (const std::string folder = folder_of(file.path, "src"); !folder.empty()) {
            folders.insert(folder);
            nodes.insert(folder);
            nodes.insert(path_in_src(file));
        }
    }

    Findings findings;
    for (const std::string& folder : folders) {
        if (!arrows.contains(folder)) {
            findings.push_back("src/" + folder + " has no row in the table of arrows");
        }
    }
    for (const auto& [node, targets] : arrows) {
        if (!nodes.contains(node)) {
            findings.push_back("the table of arrows has a row for " + node +
                               ", which is not there");
        }
        for (const std::string& target : targets) {
            if (!arrows.contains(target)) {
                findings.push_back("the row of " + node + " names " + target +
                                   ", which has no row of its own");
            }
        }
    }
    if (const std::string circle = circle_in(arrows); !circle.empty()) {
        findings.push_back("the table of arrows goes round in a circle: " + circle);
    }
    return findings;
}

Findings check_includes(const Arrows& arrows, const SourceTree& tree) {
    std::set<std::string> there;
    for (const SourceFile& file : tree) {
        there.insert(path_in_src(file));
    }
    Findings findings;
    for (const SourceFile& file : tree) {
        const std::string path = path_in_src(file);
        if (path.empty()) {
            continue;
        }
        const std::string from = node_of(path, arrows);
        for (const std::string& include : includes_of(file)) {
            const std::string to = node_of(include, arrows);
            if (!there.contains(include)) {
                findings.push_back(file.path + " includes " + include +
                                   ", which names no file from src/ on");
            } else if (!allowed(arrows, from, to)) {
                findings.push_back(file.path + " includes " + include + ": no arrow from " + from +
                                   " to " + to);
            }
        }
    }
    return findings;
}

Findings check_unused(const Arrows& arrows, const SourceTree& tree) {
    Arrows unused = arrows;
    for (const SourceFile& file : tree) {
        const std::string path = path_in_src(file);
        const auto row = unused.find(node_of(path, arrows));
        if (path.empty() || row == unused.end()) {
            continue;
        }
        for (const std::string& include : includes_of(file)) {
            row->second.erase(node_of(include, arrows));
            row->second.erase(folder_of_node(include));
        }
    }
    Findings findings;
    for (const auto& [node, targets] : unused) {
        for (const std::string& target : targets) {
            findings.push_back("the row of " + node + " allows " + target +
                               ", which nothing there includes");
        }
    }
    return findings;
}

Findings check_circles(const SourceTree& tree) {
    Graph graph;
    for (const SourceFile& file : tree) {
        if (const std::string path = path_in_src(file); !path.empty()) {
            const std::vector<std::string> includes = includes_of(file);
            graph[path].insert(includes.begin(), includes.end());
        }
    }
    const std::string circle = circle_in(graph);
    return circle.empty() ? Findings() : Findings{"files include each other: " + circle};
}

} // namespace kv408::house
