#pragma once

#include <cstdint>

namespace kv408::simulator {

/// A seeded generator of random numbers that gives the same sequence on every platform: only
/// integer arithmetic and exact divisions are used.
class Noise {
public:
    /// Equal seeds give equal sequences.
    explicit Noise(std::uint64_t seed) : state_(seed) {}

    /// 64 random bits.
    [[nodiscard]] std::uint64_t bits();

    /// Uniform in 0..1, 1 excluded.
    [[nodiscard]] double uniform();

    /// Nearly normal with mean 0 and standard deviation 1, never beyond 6.
    [[nodiscard]] double gaussian();

private:
    std::uint64_t state_;
};

} // namespace kv408::simulator
