#pragma once

#include <string>

namespace kv408 {

/// An answer that is given part by part, as the parts before have left.
class LongAnswer {
public:
    virtual ~LongAnswer() = default;

    /// Whether the next part is there yet.
    [[nodiscard]] virtual bool ready() const { return true; }

    /// The next part; empty behind the last. Throws `Refused` where there is none after all.
    virtual std::string next() = 0;
};

} // namespace kv408
