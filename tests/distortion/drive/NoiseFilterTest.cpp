#include <doctest/doctest.h>

#include <cmath>

#include "distortion/drive/NoiseFilter.h"
#include "modulation/sources/dynamics/SignalRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::evenPieces;
using test::pullPieces;
using test::Rng;
using test::Signal;
using test::turn;

constexpr std::uint32_t startSeed = 4000000000u;

struct NoiseRig {
    NoiseRig(std::vector<float> samples, float level) : input(&environment, std::move(samples)) {
        filter.setInput(&input);
        turn(filter.level, level);
    }
    wave::Environment environment;
    Capacitor::Style style;
    Signal input;
    NoiseFilter filter{&environment, &style, startSeed};
};

/// r1 + r2 of a number of samples.
std::vector<float> plainNoise(int numSamples) {
    std::uint32_t seed = startSeed;
    const auto next = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return static_cast<float>(seed & 0x7fffffffu) * 4.656613e-10f - 0.5f;
    };
    std::vector<float> noise;
    for (int i = 0; i < numSamples; ++i) {
        const float first = next();
        noise.push_back(first + next());
    }
    return noise;
}

/// Effective value of what the filter adds to the last second of two, at a level of 1.
double noiseOver(float inputLevel, float threshold = -48.0f) {
    NoiseRig rig({inputLevel}, 1.0f);
    rig.filter.threshold = threshold;
    const auto out = pullPieces(rig.environment, rig.filter, evenPieces(88200, 256));
    double sum = 0.0;
    for (std::size_t i = 44100; i < out.size(); ++i) {
        const double noise = static_cast<double>(out[i]) - static_cast<double>(inputLevel);
        sum += noise * noise;
    }
    return std::sqrt(sum / 44100.0);
}

TEST_CASE("NoiseFilter: the numbers of the generator, in every instruction set and cut") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const auto noise = plainNoise(4000);
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        NoiseRig rig({0.25f}, 0.125f);
        const auto out = pullPieces(rig.environment, rig.filter, rng.pieces(4000, 60));
        bool same = true;
        for (std::size_t i = 2000; i < out.size(); ++i)  // behind the attack
            same = same && out[i] == noise[i] * 0.125f + 0.25f;
        CHECK_MESSAGE(same, simd::nameOf(set));
    }
}

TEST_CASE("NoiseFilter: triangular noise that follows the input") {
    const auto noise = plainNoise(200000);
    double sum = 0.0, square = 0.0;
    int inner = 0;
    for (const float r : noise) {
        REQUIRE(std::abs(r) <= 1.0f);
        sum += static_cast<double>(r);
        square += static_cast<double>(r * r);
        inner += std::abs(r) < 0.5f ? 1 : 0;
    }
    const auto count = static_cast<double>(noise.size());
    CHECK(std::abs(sum / count) < 0.003);
    CHECK(square / count == doctest::Approx(1.0 / 6.0).epsilon(0.01));
    CHECK(inner / count == doctest::Approx(0.75).epsilon(0.01));

    const double full = std::sqrt(1.0 / 6.0);
    CHECK(noiseOver(0.5f) == doctest::Approx(full).epsilon(0.01));
    CHECK(noiseOver(0.004f) == doctest::Approx(full).epsilon(0.01));  // -47.96 dB
    // 20 dB below the threshold, 10 dB less noise; then the range.
    CHECK(noiseOver(0.0003981f) == doctest::Approx(full * 0.3162).epsilon(0.02));
    CHECK(noiseOver(1e-8f) == doctest::Approx(full * 0.001).epsilon(0.02));
    CHECK(noiseOver(0.0003981f, -80.0f) == doctest::Approx(full).epsilon(0.01));
}

TEST_CASE("NoiseFilter: silence ends as silence") {
    std::vector<float> burst(2000, 0.5f);
    burst.push_back(0.0f);
    NoiseRig rig(burst, 1.0f);
    const auto out = pullPieces(rig.environment, rig.filter, evenPieces(3 * 44100, 200));
    CHECK(std::abs(out[3000]) > 0.0f);
    CHECK(std::all_of(out.end() - 44100, out.end(), [](float y) { return y == 0.0f; }));
}

}  // namespace
}  // namespace cinder
