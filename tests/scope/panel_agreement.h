#pragma once

#include <string>
#include <vector>

#include "scope/parts.h"

namespace kv408 {

/// What is left out of the comparison, because the panel shows it a moment later by design.
struct PanelMoment {
    bool delays_typed = false;     ///< a delay box holds what was typed and not entered yet
    bool additional_typed = false; ///< so does "Additional Delay"
    /// A sweep has come and was shown since the last change of the panel.
    bool swept = true;
};

/// Every read-out, marker, tab and colour of the panel against what the rest of it says, worked out
/// anew by plain rules: all that does not agree. A tick must have passed since the last change.
[[nodiscard]] std::vector<std::string> panel_differences(const Parts& parts,
                                                         const PanelMoment& moment = {});

} // namespace kv408
