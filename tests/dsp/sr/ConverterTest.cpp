#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "ConverterRig.h"
#include "core/simd/InstructionSet.h"
#include "dsp/sr/ScalarConverters.h"
#include "support/Rng.h"

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

template <class Function>
void forEachSetAndCase(Function function) {
    for (const simd::InstructionSet set : simd::supportedSets())
        for (const Case& each : cases) {
            simd::ScopedInstructionSet scope(set);
            INFO(simd::nameOf(set) << ", rate " << each.rate << ", factor " << each.factor);
            test::StyleRig rig(each.rate, each.factor);
            REQUIRE(rig.style.getFactor() == each.factor);
            function(rig.style, each.factor);
        }
}

std::vector<int> piecesOf(int total, int length) {
    std::vector<int> pieces(static_cast<std::size_t>(total / length), length);
    if (total % length) pieces.push_back(total % length);
    return pieces;
}

float peakOf(const Signal& signal) {
    float peak = 0.0f;
    for (const float x : signal)
        peak = std::max(peak, std::abs(x));
    return peak;
}

float worstDifference(const Signal& a, const Signal& b) {
    float worst = 0.0f;
    for (std::size_t i = 0; i < a.size(); ++i)
        worst = std::max(worst, std::abs(a[i] - b[i]));
    return worst;
}

/// A sine that fits `periods` times into `length` samples.
Signal sine(int numSamples, int periods, int length) {
    Signal samples;
    for (int i = 0; i < numSamples; ++i)
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
    double re = 0.0, im = 0.0, power = 0.0;
    const auto* x = signal.data() + signal.size() - static_cast<std::size_t>(length);
    for (int i = 0; i < length; ++i) {
        const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) * periods / length;
        const auto sample = static_cast<double>(x[i]);
        re += sample * std::cos(angle);
        im += sample * std::sin(angle);
        power += sample * sample;
    }
    const double line = (re * re + im * im) * 2.0 / length;
    const double toFull = 2.0 / length;
    return {10.0 * std::log10(line * toFull),
            10.0 * std::log10(std::max(power - line, 1e-12) * toFull)};
}

}  // namespace

TEST_CASE("Converters: the way up leaves no images, the way down no aliases") {
    constexpr int length = 4096;
    for (const Case& each : cases) {
        test::StyleRig rig(each.rate, each.factor);
        INFO("rate " << each.rate << ", factor " << each.factor);
        const int factor = each.factor;
        // Where the passband ends, in base rates, and the sum of what each stage leaves at most.
        const auto stages = rig.style.getStages();
        const double limit = stages[0].numCoefficients == 3 ? 0.33 : 0.44;
        const double stopbandDb = -65.5;
        const double imagesDb = stopbandDb + 10.0 * std::log10(static_cast<double>(stages.size()));
        for (const double place : {0.05, 0.4, 0.98}) {
            const int periods = static_cast<int>(place * limit * length);
            INFO("at " << static_cast<double>(periods) / length << " of the base rate");
            sr::IIRInterpolator interpolator(&rig.style);
            sr::IIRDecimator decimator(&rig.style);
            const Signal in = sine(4 * length, periods, length);
            const Signal up = test::raise(interpolator, in, factor, test::uncut(in));
            const Levels above = levelsOf(up, periods, length * factor);
            CHECK(std::abs(above.sineDb) < 0.001);
            CHECK(above.restDb < imagesDb);
            const Signal down = test::lower(decimator, up, factor, test::uncut(in));
            CHECK(std::abs(levelsOf(down, periods, length).sineDb) < 0.001);

            // What lies as far above half the base rate folds onto the same place on its way down.
            decimator.reset();
            const int image = length - periods;
            const Signal high = sine(4 * length * factor, image, length * factor);
            const Signal folded = test::lower(decimator, high, factor, test::uncut(in));
            CHECK(levelsOf(folded, periods, length).sineDb < stopbandDb);
        }
    }
}

TEST_CASE("Converters: the same bits for any cut of the block") {
    auto rng = test::Rng::fromEnvironment();
    constexpr int length = 600;
    forEachSetAndCase([&](sr::IIRConverterStyle& style, int factor) {
        const Signal in = rng.noise(length);
        sr::IIRInterpolator interpolator(&style);
        sr::IIRDecimator decimator(&style);
        const Signal up = test::raise(interpolator, in, factor, {length});
        const Signal down = test::lower(decimator, up, factor, {length});
        for (const int cut : {1, 3, 64, 255, 256, 257, 0}) {
            INFO("cut " << cut << ", seed " << rng.seed());
            const auto pieces = cut ? piecesOf(length, cut) : rng.pieces(length, 40);
            interpolator.reset();
            decimator.reset();
            CHECK(test::sameBits(test::raise(interpolator, in, factor, pieces), up));
            CHECK(test::sameBits(test::lower(decimator, up, factor, pieces), down));
        }
    });
}

TEST_CASE("Converters: a channel has the same bits alone and in a group of any size") {
    auto rng = test::Rng::fromEnvironment();
    forEachSetAndCase([&](sr::IIRConverterStyle& style, int factor) {
        for (const int size : {1, 2, 3, 4, 5, 7, 8, 12}) {
            INFO(size << " channels, seed " << rng.seed());
            struct Member {
                explicit Member(sr::IIRConverterStyle* style)
                    : up(style), upAlone(style), down(style), downAlone(style) {}
                sr::IIRInterpolator up, upAlone;
                sr::IIRDecimator down, downAlone;
                Signal in, high, highAlone, out, outAlone;
            };
            std::vector<std::unique_ptr<Member>> members;
            for (int i = 0; i < size; ++i)
                members.push_back(std::make_unique<Member>(&style));
            for (const int n : {1, 50, 13}) {
                std::vector<sr::IIRInterpolator::Job> rising;
                std::vector<sr::IIRDecimator::Job> falling;
                for (const auto& m : members) {
                    m->in = rng.noise(n);
                    for (Signal* s : {&m->high, &m->highAlone})
                        s->assign(static_cast<std::size_t>(n * factor), 0.0f);
                    for (Signal* s : {&m->out, &m->outAlone})
                        s->assign(static_cast<std::size_t>(n), 0.0f);
                    m->upAlone.process(m->in.data(), m->highAlone.data(), n);
                    m->downAlone.process(m->highAlone.data(), m->outAlone.data(), n);
                    rising.push_back({&m->up, m->in.data(), m->high.data()});
                    falling.push_back({&m->down, m->high.data(), m->out.data()});
                }
                bool hasRun = false;
                const auto report = test::guarded([&] {
                    hasRun = sr::IIRInterpolator::processGroup(rising, n) &&
                             sr::IIRDecimator::processGroup(falling, n);
                });
                REQUIRE(hasRun);
                REQUIRE_MESSAGE(report.isClean(), report);
                for (const auto& m : members) {
                    REQUIRE(test::sameBits(m->high, m->highAlone));
                    REQUIRE(test::sameBits(m->out, m->outAlone));
                }
            }
        }
    });
}

TEST_CASE("Converters: agree with their scalar twins through changes of factor and rate") {
    auto rng = test::Rng::fromEnvironment();
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        test::StyleRig rig(44100.0f);
        sr::IIRInterpolator up(&rig.style);
        sr::IIRDecimator down(&rig.style);
        sr::ScalarInterpolator scalarUp(&rig.style);
        sr::ScalarDecimator scalarDown(&rig.style);
        for (int round = 0; round < 400; ++round) {
            const float rates[] = {11025, 22050, 24000, 44100, 48000, 96000, 192000, 200000};
            if (rng.integer(0, 5) == 0)
                rig.environment.setSampleRate(rates[rng.integer(0, std::size(rates) - 1)]);
            if (rng.integer(0, 1) == 0) rig.style.setFactor(1 << rng.integer(0, 3));
            const int n = rng.integer(1, 60);
            const int factor = rig.style.getFactor();
            INFO(simd::nameOf(set)
                 << ", round " << round << ", rate " << rig.environment.getSampleRate()
                 << ", factor " << factor << ", seed " << rng.seed());
            const Signal in = rng.noise(n);
            const Signal high = test::raise(up, in, factor, {n});
            const Signal scalarHigh = test::raise(scalarUp, in, factor, {n});
            const Signal out = test::lower(down, scalarHigh, factor, {n});
            const Signal scalarOut = test::lower(scalarDown, scalarHigh, factor, {n});
            if (set == simd::InstructionSet::baseline) {  // nothing fuses there
                REQUIRE(test::sameBits(high, scalarHigh));
                REQUIRE(test::sameBits(out, scalarOut));
            } else {
                REQUIRE(worstDifference(high, scalarHigh) <= 2e-6f * (1.0f + peakOf(scalarHigh)));
                REQUIRE(worstDifference(out, scalarOut) <= 2e-6f * (1.0f + peakOf(scalarOut)));
            }
        }
    }
}

TEST_CASE("Converters: with no stages nothing is read or written") {
    for (const Case& none : {Case{44100, 1}, Case{192000.52f, 8}}) {
        test::StyleRig rig(none.rate, none.factor);
        Signal out(64, 7.0f);
        CHECK_FALSE(rig.style.createInterpolator()->process(nullptr, out.data(), 8));
        CHECK_FALSE(rig.style.createDecimator()->process(nullptr, out.data(), 8));
        CHECK(out == Signal(64, 7.0f));
    }
    test::StyleRig rig(44100.0f);
    Signal out(64, 7.0f);
    CHECK(rig.style.createInterpolator()->process(nullptr, out.data(), 0));
    CHECK(out == Signal(64, 7.0f));
    CHECK_FALSE(sr::IIRInterpolator::processGroup({}, 8));
}

TEST_CASE("Converters: a reset leaves nothing of the past") {
    auto rng = test::Rng::fromEnvironment();
    test::StyleRig rig(48000.0f);
    const auto up = rig.style.createInterpolator();
    const auto down = rig.style.createDecimator();
    const Signal in = rng.noise(100);
    const Signal high = test::raise(*up, in, 8, test::uncut(in));
    const Signal out = test::lower(*down, high, 8, test::uncut(in));
    CHECK_FALSE(test::sameBits(test::raise(*up, in, 8, test::uncut(in)), high));
    CHECK_FALSE(test::sameBits(test::lower(*down, high, 8, test::uncut(in)), out));
    up->reset();
    down->reset();
    INFO("seed " << rng.seed());
    CHECK(test::sameBits(test::raise(*up, in, 8, test::uncut(in)), high));
    CHECK(test::sameBits(test::lower(*down, high, 8, test::uncut(in)), out));
}
