#include "support/Rng.h"

#include <algorithm>
#include <cstdlib>

namespace cinder::test {

Rng Rng::fromEnvironment() {
    const char* text = std::getenv("CINDER_TEST_SEED");
    return Rng(text ? std::strtoull(text, nullptr, 0) : 0x43494e4445520001ull);
}

// Source: G. Steele, D. Lea, C. Flood, "Fast splittable pseudorandom number generators", 2014.
std::uint64_t Rng::next() {
    std::uint64_t z = (state += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

int Rng::integer(int first, int last) {
    const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(last) - first + 1);
    return static_cast<int>(first + static_cast<std::int64_t>(next() % span));
}

double Rng::real(double from, double to) {
    return from + (to - from) * (static_cast<double>(next() >> 11) * 0x1p-53);
}

std::vector<float> Rng::noise(int numSamples, float peak) {
    std::vector<float> samples(static_cast<std::size_t>(numSamples));
    for (float& sample : samples)
        sample = static_cast<float>(real(-1.0, 1.0)) * peak;
    return samples;
}

std::vector<int> Rng::pieces(int total, int longest) {
    std::vector<int> lengths;
    while (total > 0) {
        lengths.push_back(std::min(total, integer(1, longest)));
        total -= lengths.back();
    }
    return lengths;
}

}  // namespace cinder::test
