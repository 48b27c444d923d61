#pragma once

// Choosing from a list by the words that stand there.

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "panel/controls.h"
#include "scope/scope.h"

namespace kv408 {

/// The user chooses the entry `text` of `list`; throws where it has none such.
inline void choose_entry(Scope& scope, ListBox& list, std::string_view text) {
    const auto& entries = list.entries();
    const auto found = std::find(entries.begin(), entries.end(), text);
    if (found == entries.end()) {
        throw std::runtime_error("no entry " + std::string(text));
    }
    scope.act([&] { list.set_index(static_cast<int>(found - entries.begin())); });
}

} // namespace kv408
