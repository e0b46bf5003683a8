#pragma once

#include <cstdint>
#include <vector>

namespace cinder::test {

/// Random numbers that are the same on every machine. SplitMix64; the seed comes from the
/// environment variable CINDER_TEST_SEED where it is set, so that a failed run can be replayed.
/// Tests print it: INFO("seed " << rng.seed()).
class Rng {
public:
    static Rng fromEnvironment();
    explicit Rng(std::uint64_t seed) : startSeed(seed), state(seed) {}

    std::uint64_t seed() const { return startSeed; }
    std::uint64_t next();
    /// A whole number in first..last, both included.
    int integer(int first, int last);
    /// A number in [from, to).
    double real(double from, double to);
    /// Samples in [-peak, peak).
    std::vector<float> noise(int numSamples, float peak = 1.0f);
    /// Cuts `total` into pieces of 1..longest.
    std::vector<int> pieces(int total, int longest);

private:
    std::uint64_t startSeed;
    std::uint64_t state;
};

}  // namespace cinder::test
