#include "core/simd/Sanitise.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "support/Rng.h"

using namespace cinder;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

bool sameBits(const float* a, const float* b, int n) {
    return n == 0 || std::memcmp(a, b, static_cast<std::size_t>(n) * sizeof(float)) == 0;
}

float sanitised(float x) {
    if (!std::isfinite(x)) return 0.0f;
    return std::fmin(std::fmax(x, -simd::loudestSample), simd::loudestSample);
}

// Noise with now and then a sample that must not pass.
std::vector<float> dirtyNoise(test::Rng& rng, int n) {
    constexpr float dirt[] = {infinity, -infinity, nan,    -nan, 1e30f,
                              -1e30f,   1000.0f,   1e-41f, -0.0f};
    std::vector<float> samples = rng.noise(n);
    for (float& x : samples)
        if (rng.integer(0, 3) == 0) x = dirt[rng.integer(0, std::size(dirt) - 1)];
    return samples;
}

}  // namespace

TEST_CASE("sanitise: any block length, alignment and cut, in every set, and nothing beyond") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr float untouched = 123.0f;
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        for (int n = 0; n <= 70; ++n) {
            INFO(std::string(simd::nameOf(set)) << ", n " << n);
            const int offset = rng.integer(0, 3);
            std::vector<float> in = dirtyNoise(rng, n + offset);
            std::vector<float> expected, out(static_cast<std::size_t>(n) + 20, untouched);
            for (int i = 0; i < n; ++i)
                expected.push_back(sanitised(in[offset + i]));

            // In one go and elsewhere, or piece by piece in place.
            simd::sanitise(in.data() + offset, out.data() + 1, n);
            int at = offset;
            for (const int piece : rng.pieces(n, 33)) {
                simd::sanitise(in.data() + at, in.data() + at, piece);
                at += piece;
            }
            CHECK(sameBits(out.data() + 1, expected.data(), n));
            CHECK(sameBits(in.data() + offset, expected.data(), n));
            CHECK(out.front() == untouched);
            CHECK(std::count(out.begin() + n + 1, out.end(), untouched) == 19);
        }
    }
}
