#pragma once

#include <algorithm>
#include <vector>

#include "display/surface.h"

namespace kv408 {

/// The columns of a surface whose pixels have to be composed anew.
class DirtyColumns {
public:
    /// None of `width` columns.
    explicit DirtyColumns(int width) : dirty_(static_cast<std::size_t>(width)) {}

    /// Adds the columns of `columns` that lie on the surface.
    void add(Columns columns) {
        const Columns part = common(columns, Columns{0, static_cast<int>(dirty_.size())});
        if (part.empty()) {
            return;
        }
        std::fill(dirty_.begin() + part.left, dirty_.begin() + part.right, true);
        hull_ = hull_.empty()
                    ? part
                    : Columns{std::min(hull_.left, part.left), std::max(hull_.right, part.right)};
    }

    /// Adds the columns that exactly one of `a` and `b` has.
    void add_difference(Columns a, Columns b) {
        if (a.empty() || b.empty() || common(a, b).empty()) {
            add(a);
            add(b);
            return;
        }
        add({std::min(a.left, b.left), std::max(a.left, b.left)});
        add({std::min(a.right, b.right), std::max(a.right, b.right)});
    }

    void clear() {
        std::fill(dirty_.begin() + hull_.left, dirty_.begin() + hull_.right, false);
        hull_ = {};
    }

    /// The smallest range that holds every column added; empty when none was.
    [[nodiscard]] Columns hull() const { return hull_; }

    /// Calls `visit` with each range of neighbouring columns that were added, from the left.
    template <typename Visit>
    void for_each_range(const Visit& visit) const {
        const auto find = [this](int from, bool wanted) {
            while (from < hull_.right &&
                   dirty_[static_cast<std::size_t>(from)] != static_cast<char>(wanted)) {
                ++from;
            }
            return from;
        };
        for (int left = hull_.left; left < hull_.right;) {
            const int right = find(left, false);
            visit(Columns{left, right});
            left = find(right, true);
        }
    }

private:
    std::vector<char> dirty_;
    Columns hull_;
};

} // namespace kv408
