#pragma once

#include <cstdint>

namespace kv408::simulator {

/// A seeded generator of random numbers that gives the same sequence on every platform: of the
/// machine's arithmetic it uses only what rounds alike everywhere.
class Noise {
public:
    /// Equal seeds give equal sequences.
    explicit Noise(std::uint64_t seed) : state_(seed) {}

    /// 64 random bits.
    [[nodiscard]] std::uint64_t bits();

    /// Uniform in 0..1, 1 excluded.
    [[nodiscard]] double uniform();

    /// Normal with mean 0 and standard deviation 1: up to 4 standard deviations as many lie beyond
    /// as should, within 5 %; none lies beyond 9.
    [[nodiscard]] double gaussian();

private:
    std::uint64_t state_;
};

} // namespace kv408::simulator
