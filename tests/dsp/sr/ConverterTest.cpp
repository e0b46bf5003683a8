#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <numbers>
#include <numeric>

#include "ConverterRig.h"
#include "core/simd/InstructionSet.h"
#include "dsp/sr/ScalarConverters.h"
#include "support/Rng.h"
#include "support/Spectrum.h"

using namespace cinder;
using test::Signal;

namespace {

struct Case {
    float rate;
    int factor;
};
// One of every cascade, those of the common rates first.
const Case cases[] = {{44100, 8},  {48000, 8}, {44100, 4}, {96000, 4}, {44100, 2},
                      {192000, 2}, {22050, 8}, {24000, 8}, {11025, 8}, {22050, 4}};

void forEachSetAndCase(auto function) {
    for (const simd::InstructionSet set : simd::supportedSets())
        for (const Case& each : cases) {
            simd::ScopedInstructionSet scope(set);
            INFO(simd::nameOf(set) << ", rate " << each.rate << ", factor " << each.factor);
            test::StyleRig rig(each.rate, each.factor);
            REQUIRE(rig.style.getFactor() == each.factor);
            function(rig.style, each.factor);
        }
}

/// Equal to the bit where nothing fuses, elsewhere to the rounding.
bool agree(const Signal& a, const Signal& b, simd::InstructionSet set) {
    if (set == simd::InstructionSet::baseline) return test::sameBits(a, b);
    float peak = 0.0f, worst = 0.0f;
    for (std::size_t i = 0; i < b.size(); ++i) {
        peak = std::max(peak, std::abs(b[i]));
        worst = std::max(worst, std::abs(a[i] - b[i]));
    }
    return a.size() == b.size() && worst <= 2e-6f * (1.0f + peak);
}

/// Four times `length` samples, into each of which a sine fits `periods` times.
Signal sine(int periods, int length) {
    Signal samples;
    for (int i = 0; i < 4 * length; ++i)
        samples.push_back(static_cast<float>(
            std::sin(2.0 * std::numbers::pi * static_cast<double>(i) * periods / length)));
    return samples;
}

struct Levels {
    double sineDb;  // of the line of the sine, 0 dB for amplitude 1
    double restDb;  // of everything else
};

/// Of the last `length` samples, into which the sine fits `periods` times.
Levels levelsOf(const Signal& signal, int periods, int length) {
    const auto power =
        test::powerSpectrum(std::span(signal).last(static_cast<std::size_t>(length)));
    const double line = power[static_cast<std::size_t>(periods)];
    const double rest = std::accumulate(power.begin(), power.end(), 1e-15) - line;
    return {test::decibelsOfPower(2.0 * line), test::decibelsOfPower(2.0 * rest)};
}

}  // namespace

TEST_CASE("Converters: the way up leaves no images, the way down no aliases") {
    constexpr int length = 4096;
    for (const auto& [rate, factor] : cases) {
        test::StyleRig rig(rate, factor);
        // Where the passband ends, in base rates, and the sum of what each stage leaves at most.
        const auto stages = rig.style.getStages();
        const double limit = stages[0].numCoefficients == 3 ? 0.33 : 0.44;
        const double stopbandDb = -65.5;
        const double imagesDb = stopbandDb + 10.0 * std::log10(static_cast<double>(stages.size()));
        for (const double place : {0.05, 0.4, 0.98}) {
            const int periods = static_cast<int>(place * limit * length);
            INFO("rate " << rate << ", factor " << factor << ", " << periods << " periods");
            sr::IIRInterpolator interpolator(&rig.style);
            sr::IIRDecimator decimator(&rig.style);
            const Signal up = test::raise(interpolator, sine(periods, length), factor);
            const Levels above = levelsOf(up, periods, length * factor);
            CHECK(std::abs(above.sineDb) < 0.001);
            CHECK(above.restDb < imagesDb);
            const Signal down = test::lower(decimator, up, factor);
            CHECK(std::abs(levelsOf(down, periods, length).sineDb) < 0.001);

            // What lies as far above half the base rate folds onto the same place on its way down.
            decimator.reset();
            const Signal high = sine(length - periods, length * factor);
            const Signal folded = test::lower(decimator, high, factor);
            CHECK(levelsOf(folded, periods, length).sineDb < stopbandDb);
        }
    }
}

TEST_CASE("Converters: the same bits for any cut, in groups of any size, and after a reset") {
    auto rng = test::Rng::fromEnvironment();
    constexpr int length = 600;
    constexpr std::size_t most = 12;
    forEachSetAndCase([&](sr::IIRConverterStyle& style, int factor) {
        std::deque<sr::IIRInterpolator> up;
        std::deque<sr::IIRDecimator> down;
        std::vector<Signal> in, high, low;  // alone and uncut
        for (std::size_t i = 0; i < most; ++i) {
            in.push_back(rng.noise(length));
            high.push_back(test::raise(up.emplace_back(&style), in[i], factor));
            low.push_back(test::lower(down.emplace_back(&style), high[i], factor));
        }
        const std::pair<std::size_t, int> groups[] = {{1, 1},   {2, 3},   {3, 64}, {4, 255},
                                                      {5, 256}, {7, 257}, {8, 0},  {most, 0}};
        for (const auto& [size, cut] : groups) {
            INFO(size << " channels, cut " << cut << " (0: at random), seed " << rng.seed());
            std::vector<Signal> raised(size, Signal(high[0].size())), lowered(size, Signal(length));
            for (std::size_t i = 0; i < size; ++i)
                up[i].reset(), down[i].reset();
            for (int at = 0, n = 0; at < length; at += n) {
                n = std::min(cut ? cut : rng.integer(1, 60), length - at);
                std::vector<sr::IIRInterpolator::Job> rising;
                std::vector<sr::IIRDecimator::Job> falling;
                for (std::size_t i = 0; i < size; ++i) {
                    float* const above = raised[i].data() + at * factor;
                    rising.push_back({&up[i], in[i].data() + at, above});
                    falling.push_back({&down[i], above, lowered[i].data() + at});
                }
                const test::RealtimeGuard guard;
                REQUIRE(sr::IIRInterpolator::processGroup(rising, n));
                REQUIRE(sr::IIRDecimator::processGroup(falling, n));
            }
            for (std::size_t i = 0; i < size; ++i) {
                REQUIRE(test::sameBits(raised[i], high[i]));
                REQUIRE(test::sameBits(lowered[i], low[i]));
            }
        }
    });
}

TEST_CASE("Converters: agree with their scalar twins through changes of factor and rate") {
    auto rng = test::Rng::fromEnvironment();
    const float rates[] = {11025, 22050, 24000, 44100, 48000, 96000, 192000, 200000};
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        test::StyleRig rig(44100.0f);
        sr::IIRInterpolator up(&rig.style);
        sr::IIRDecimator down(&rig.style);
        sr::ScalarInterpolator scalarUp(&rig.style);
        sr::ScalarDecimator scalarDown(&rig.style);
        for (int round = 0; round < 400; ++round) {
            if (rng.integer(0, 5) == 0)
                rig.environment.setSampleRate(rates[rng.integer(0, std::size(rates) - 1)]);
            if (rng.integer(0, 1) == 0) rig.style.setFactor(1 << rng.integer(0, 3));
            const int factor = rig.style.getFactor();
            INFO(simd::nameOf(set)
                 << ", round " << round << ", rate " << rig.environment.getSampleRate()
                 << ", factor " << factor << ", seed " << rng.seed());
            const Signal in = rng.noise(rng.integer(1, 60));
            const Signal high = test::raise(scalarUp, in, factor);
            REQUIRE(agree(test::raise(up, in, factor), high, set));
            const Signal out = test::lower(scalarDown, high, factor);
            REQUIRE(agree(test::lower(down, high, factor), out, set));
        }
    }
}

TEST_CASE("Converters: with no stages nothing is read or written") {
    Signal out(64, 7.0f);
    for (const auto& [rate, factor] : {Case{44100, 1}, Case{192000.52f, 8}}) {
        test::StyleRig rig(rate, factor);
        CHECK_FALSE(rig.style.createInterpolator()->process(nullptr, out.data(), 8));
        CHECK_FALSE(rig.style.createDecimator()->process(nullptr, out.data(), 8));
    }
    test::StyleRig rig(44100.0f);
    CHECK(rig.style.createInterpolator()->process(nullptr, out.data(), 0));
    CHECK_FALSE(sr::IIRInterpolator::processGroup({}, 8));
    CHECK(out == Signal(64, 7.0f));
}
