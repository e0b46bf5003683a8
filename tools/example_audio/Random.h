#pragma once

#include <cstdint>

namespace cinder::example {

/// Random numbers in whole-number arithmetic, so that each loop is the same on every run.
/// SplitMix64.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    /// A number in [-1, 1).
    double noise() { return static_cast<double>(next() >> 11) * 0x1p-52 - 1.0; }
    /// A number in [0, 1).
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

private:
    std::uint64_t next() {
        std::uint64_t z = state += 0x9e3779b97f4a7c15u;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    std::uint64_t state;
};

}  // namespace cinder::example
