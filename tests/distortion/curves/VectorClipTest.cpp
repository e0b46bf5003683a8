#include "distortion/curves/VectorClip.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <typeinfo>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "distortion/curves/Clip.h"
#include "distortion/curves/WaveShaper.h"
#include "support/Rng.h"

using namespace cinder;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// The vector shapers: what the styles use, and settings beyond them. The bound on the difference to
// clip is in units of the last place of its result, which for a denormal is that of the smallest
// normal number. docs/curves.md has the same figures.
struct Row {
    Curve curve;
    float power, negativeScale;
    double ulps;
};
constexpr Row rows[] = {
    {arcTangentCurve, 1.0f, 1.0f, 3.0},
    {divisionByMagnitudeCurve, 1.0f, 1.0f, 2.0},
    {sineCurve, 1.0f, 1.0f, 3.0},
    {polynomeOrder2Curve, 1.0f, 1.0f, 2.0},
    {polynomeOrder3Curve, 1.0f, 1.0f, 3.0},
    {tubeCurve, 1.0f, 1.0f, 12.0},
    {rectifyCurve, 1.0f, 1.0f, 2.0},
    {arcTangentCurve, 1.0f, 0.2f, 4.0},
    {divisionByMagnitudeCurve, 1.0f, 0.5f, 4.0},
    {arcTangentCurve, 0.8f, 0.75f, 8.0},
    {arcTangentCurve, 0.8f, 0.5f, 8.0},
    {divisionByMagnitudeCurve, 0.8f, 0.5f, 8.0},
    {divisionByMagnitudeCurve, 0.5f, 2.0f, 8.0},
    {arcTangentCurve, 4.0f, 0.1f, 8.0},
};

double lastPlace(float value) {
    const float magnitude = std::fmax(std::fabs(value), std::numeric_limits<float>::min());
    return static_cast<double>(std::nextafter(magnitude, infinity) - magnitude);
}

void forEverySet(auto check) {
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        INFO(std::string(simd::nameOf(set)));
        for (const Row& row : rows) {
            INFO(std::string(curveNames[row.curve])
                 << ", power " << row.power << ", negative scale " << row.negativeScale);
            const auto shaper = makeWaveShaper(row.curve, row.power, row.negativeScale);
            check(row, *shaper);
        }
    }
}

}  // namespace

TEST_CASE("Vector shapers: agree with clip over the whole range, 0 for NaN, no overshoot") {
    // Floats of either sign, some bit patterns apart, from 0 to infinity, and on both sides of
    // where the pieces of the tube meet.
    std::vector<float> in = {notANumber, -notANumber, 0.0f,       -0.0f,      infinity,  -infinity,
                             -1.754819f, -1.754817f,  -0.089051f, -0.089049f, 0.320017f, 0.320019f};
    for (std::uint32_t bits = 0; bits < 0x7f800000; bits += 49999)
        for (const std::uint32_t sign : {0u, 0x80000000u})
            in.push_back(std::bit_cast<float>(bits | sign));
    std::vector<float> out(in.size());
    forEverySet([&](const Row& row, WaveShaper& shaper) {
        shaper.process(in.data(), out.data(), static_cast<int>(in.size()));
        CHECK(std::all_of(out.begin(), out.begin() + 4, [](float y) { return y == 0.0f; }));
        double worst = 0.0;
        float worstAt = 0.0f;
        for (std::size_t i = 0; i < in.size(); ++i) {
            const float expected = clip(in[i], row.curve, row.power, row.negativeScale);
            const double difference =
                std::fabs(static_cast<double>(out[i]) - static_cast<double>(expected));
            const double ulps = std::isnan(out[i]) ? 1e9 : difference / lastPlace(expected);
            if (ulps > worst) worst = ulps, worstAt = in[i];
            if (row.negativeScale == 1.0f && std::fabs(in[i]) > 3.3e38f)
                CHECK(std::fabs(out[i]) <= std::fabs(expected));
        }
        INFO("worst at " << worstAt);
        CHECK(worst <= row.ulps);
    });
}

TEST_CASE("Vector shapers: the same bits for any cut, alignment and place") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int n = 600;
    forEverySet([&](const Row&, WaveShaper& shaper) {
        const std::vector<float> in = rng.noise(n, 4.0f);
        std::vector<float> whole(n), cut(n + 1, 7.0f), inPlace = in;
        shaper.process(in.data(), whole.data(), n);
        int at = 0;
        for (const int piece : rng.pieces(n, 70)) {
            shaper.process(in.data() + at, cut.data() + at, piece);
            CHECK(cut[at + piece] == 7.0f);
            shaper.process(inPlace.data() + at, inPlace.data() + at, piece);
            at += piece;
        }
        CHECK(std::memcmp(whole.data(), cut.data(), n * sizeof(float)) == 0);
        CHECK(std::memcmp(whole.data(), inPlace.data(), n * sizeof(float)) == 0);
    });
}

TEST_CASE("makeWaveShaper: a vector shaper where there is one, clip elsewhere") {
    const auto isPlain = [](int curve, float power, float scale) {
        const auto shaper = makeWaveShaper(curve, power, scale);
        const float x = -0.3f;
        float y = 0.0f;
        shaper->process(&x, &y, 1);
        CHECK(y == doctest::Approx(clip(x, curve, power, scale)).epsilon(1e-6));
        const WaveShaper& made = *shaper;
        return typeid(made) == typeid(WaveShaper);
    };
    const std::set<int> powered = {arcTangentCurve, divisionByMagnitudeCurve};
    const std::set<int> vectored = {sineCurve, polynomeOrder2Curve, polynomeOrder3Curve, tubeCurve,
                                    rectifyCurve};
    for (int curve = -1; curve <= 15; ++curve) {
        INFO("curve " << curve);
        CHECK(isPlain(curve, 1.0f, 1.0f) == !(powered.contains(curve) || vectored.contains(curve)));
        CHECK(isPlain(curve, 0.8f, 1.0f) == !powered.contains(curve));
        CHECK(isPlain(curve, 1.0f, 0.5f) == !powered.contains(curve));
    }
}
