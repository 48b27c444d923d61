#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kv408 {

/// The number of codes of the instrument's 12-bit scale, 0..4095.
inline constexpr int scale_codes = 4096;

/// The highest value of a counter of a density.
inline constexpr std::uint32_t highest_count = 0xFFFFFFFF;

/// How often one channel's trace passed where: a counter for each point of its sweeps and each code
/// of the scale, as the instrument sends them, before correction and inversion. Four bytes each:
/// 10.6 MB for the 650 points of a block.
class Density {
public:
    /// Codes of a point that lie from `first` to, not including, `end`; none when both are equal.
    struct Codes {
        int first = 0;
        int end = 0;

        friend bool operator==(const Codes&, const Codes&) = default;
    };

    /// A density of sweeps of `points` points, in which nothing has been counted.
    explicit Density(int points);

    /// Counts a sweep: the code of each of its points `weight` times. `codes` has as many points
    /// as the density. A code beyond an end of the scale counts at that end; a counter stops at
    /// `highest_count`.
    void add(std::span<const std::int16_t> codes, std::uint32_t weight = 1);

    /// Forgets all that was counted.
    void clear();

    /// Multiplies all counters by `factor`, 0 or more, with results rounded, halves down: what is
    /// halved again and again vanishes. A counter stops at `highest_count`.
    void multiply(double factor);

    [[nodiscard]] int points() const { return static_cast<int>(passed_.size()); }

    /// The counters of `point`, 0 the first, by code: 4096 of them.
    [[nodiscard]] std::span<const std::uint32_t> at(int point) const {
        return std::span(counts_).subspan(static_cast<std::size_t>(point) * scale_codes,
                                          scale_codes);
    }

    /// Where the trace passed at `point`: outside of these its counters are 0.
    [[nodiscard]] Codes passed(int point) const { return passed_[static_cast<std::size_t>(point)]; }

    /// The highest counter.
    [[nodiscard]] std::uint32_t highest() const { return highest_; }

    /// A counter has been held at `highest_count`: the counts are too small from then on.
    [[nodiscard]] bool saturated() const { return saturated_; }

private:
    std::vector<std::uint32_t> counts_; ///< point by point, each by code
    std::vector<Codes> passed_;
    std::uint32_t highest_ = 0;
    bool saturated_ = false;
};

} // namespace kv408
