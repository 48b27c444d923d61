#pragma once

#include <optional>
#include <string_view>
#include <utility>

namespace kv408 {

/// Why a number cannot be told.
enum class WhyNot {
    no_hits,      ///< nothing was counted
    flat,         ///< the trace has no two levels
    clipped,      ///< more than one hit in a thousand lies at an end of the instrument's scale
    no_crossing,  ///< the trace does not cross the level, or not as often as asked for
    few_hits,     ///< too few hits to say anything
    points_apart, ///< an edge passes between two points
    one_crossing, ///< a unit interval shows only between two crossings
    no_middle,    ///< the middle of no unit interval is on the screen
    no_rest,      ///< the trace rests at neither of its levels on the screen
    closed,       ///< the eye is closed
    only_noise    ///< noise, or the jitter that was taken off, is more than what was found
};

/// `why` in words for people: a sentence without its full stop.
[[nodiscard]] std::string_view text_of(WhyNot why);

/// A value, or why there is none.
template <typename Value>
class Told {
public:
    // Either is an answer, so a function returns the one or the other as it is.
    explicit(false) Told(Value value) : value_(std::move(value)) {}
    explicit(false) Told(WhyNot why) : why_(why) {}

    explicit operator bool() const { return value_.has_value(); }
    [[nodiscard]] const Value& operator*() const { return *value_; }
    [[nodiscard]] const Value* operator->() const { return &*value_; }

    /// Why there is none; nothing to go by where there is a value.
    [[nodiscard]] WhyNot why() const { return why_; }

private:
    std::optional<Value> value_;
    WhyNot why_ = WhyNot::no_hits;
};

} // namespace kv408
