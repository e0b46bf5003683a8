#include "dsp/filters/EQFilter.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <string>

#include "core/simd/InstructionSet.h"
#include "dsp/filters/Bilinear.h"
#include "dsp/filters/ClosedForm.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using std::numbers::pi;
using test::play;
using test::Rng;
using test::SignalSource;
using test::turn;

/// Hands out the schedules that a block would run by.
struct OpenEqualiser : EQFilter {
    explicit OpenEqualiser(wave::Environment* environment)
        : EQFilter(environment), own(environment, AnalogFilterPrototype::maxSections) {}

    void set(Shape newShape, Slope newSlope, float hz, float gainDb, float rawQ) {
        turn(frequency, std::log2(hz));
        turn(gain, gainDb);
        turn(q, rawQ);
        shape = newShape;
        slope = newSlope;
    }
    /// The lengths of the runs in the next block.
    std::vector<int> runLengths(int numSamples) {
        environment->beginBlock();
        computeCoefficients(numSamples, own);
        std::vector<int> lengths(own.isHeld() ? 1 : 0, numSamples);
        own.hold(nullptr, 0.0f);
        for (std::size_t i = 0; i < own.getSchedule().size(); ++i)
            lengths.push_back(own.getSchedule().countAt(i));
        environment->render(numSamples, 0);
        return lengths;
    }
    BiquadProcessor own;
};

std::vector<float> impulse(int numSamples) {
    std::vector<float> samples(static_cast<std::size_t>(numSamples));
    samples[0] = 1.0f;
    return samples;
}

std::complex<double> transformAt(const std::vector<float>& samples, double omega) {
    const std::complex<double> step = std::polar(1.0, -omega);
    std::complex<double> sum = 0.0, turn = 1.0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * turn;
        turn *= step;
    }
    return sum;
}

/// Where the bilinear transform puts `hz`, in multiples of where it puts the filter's frequency.
double warpedRatio(double hz, double centreHz, double rate) {
    const auto tangent = [rate](double f) { return std::tan(std::min(pi * f / rate, 1.5657964)); };
    return tangent(hz) / tangent(centreHz);
}

TEST_CASE("EQFilter: sounds as the warped analog prototype at every shape, slope, rate, gain, Q") {
    constexpr struct {
        float rate, hz, gainDb, q;
    } settings[] = {
        {44100.0f, 700.0f, 12.0f, 1.0f},    {48000.0f, 9000.0f, -18.0f, 0.3f},
        {88200.0f, 5000.0f, 3.0f, 6.0f},    {96000.0f, 3000.0f, -0.2f, 40.0f},
        {192000.0f, 20000.0f, 30.0f, 0.1f}, {44100.0f, 30000.0f, 6.0f, 1.0f},
    };
    for (const FilterShapeRow& row : filterShapes)
        for (int slope = 0; slope < numFilterSlopes; ++slope)
            for (const auto& s : settings) {
                INFO(std::string(row.name) << ", slope " << slope << ", " << s.hz << " Hz at "
                                           << s.rate << ", " << s.gainDb << " dB, Q " << s.q);
                wave::Environment environment;
                environment.setSampleRate(s.rate);
                SignalSource source(&environment, impulse(16384));
                OpenEqualiser filter(&environment);
                filter.setInput(&source);
                const auto chosen = static_cast<FilterSlope>(slope);
                filter.set(row.shape, chosen, s.hz, s.gainDb, s.q);
                const std::vector<float> response = play(environment, filter, 16384);
                for (const double hz : {130.0, 690.0, 3100.0, 5200.0, 11000.0, 19500.0}) {
                    const double w =
                        warpedRatio(hz, static_cast<double>(s.hz), static_cast<double>(s.rate));
                    const double wanted = std::sqrt(test::closedForm(
                        row.shape, polesOf(chosen, row.shape), static_cast<double>(s.gainDb),
                        static_cast<double>(s.q), w));
                    const double heard = std::abs(
                        transformAt(response, 2.0 * pi * hz / static_cast<double>(s.rate)));
                    INFO(hz << " Hz: " << heard << " for " << wanted);
                    // 0.001 dB, and what rounding to float between the sections leaves.
                    CHECK(std::abs(heard - wanted) < 1.2e-4 * wanted + 2e-6);
                }
            }
}

TEST_CASE("EQFilter: one section with a gain is designed as its prototype is, in every set") {
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        for (const auto shape : {FilterShape::Bell, FilterShape::LowShelf, FilterShape::HighShelf})
            for (const float q : {0.025f, 0.3f, 1.0f, 40.0f})
                for (const float gainDb : {-30.0f, -7.3f, 0.05f, 11.0f, 30.0f}) {
                    INFO("shape " << static_cast<int>(shape) << ", Q " << q << ", " << gainDb);
                    wave::Environment environment;
                    OpenEqualiser filter(&environment);
                    filter.set(shape, FilterSlope::Poles2, 2500.0f, gainDb, q);
                    filter.runLengths(1);
                    const AnalogFilterPrototype prototype = filter.getPrototype();
                    REQUIRE(prototype.getNumSections() == 1);
                    const float omega = angularFrequency(std::log2(2500.0f), 44100.0f);
                    const auto tangent = static_cast<double>(bilinearTangent(omega));
                    const BiquadCoefficients wanted = mapBilinear(prototype.getSection(0), tangent);
                    const BiquadCoefficients& c = filter.getCoefficients(0);
                    constexpr double error = 1e-13;
                    CHECK(std::abs(c.b0 - wanted.b0) < error * std::abs(wanted.b0));
                    CHECK(std::abs(c.b1 - wanted.b1) < error * std::abs(wanted.b0));
                    CHECK(std::abs(c.b2 - wanted.b2) < error * std::abs(wanted.b0));
                    CHECK(std::abs(c.a1 - wanted.a1) < error);
                    CHECK(std::abs(c.a2 - wanted.a2) < error);
                }
    }
}

TEST_CASE("EQFilter: stays finite and dies away at every frequency, also above half the rate") {
    Rng rng = Rng::fromEnvironment();
    std::vector<float> burst = rng.noise(1024);
    burst.resize(30000);
    for (const FilterShapeRow& row : filterShapes)
        for (const int slope : {0, 1, 3, 8})
            for (const float rate : {44100.0f, 192000.0f})
                for (const float hz : {1.0f, 200.0f, 6000.0f, 21900.0f, 22050.0f, 32768.0f}) {
                    INFO(std::string(row.name) << ", slope " << slope << ", " << hz << " Hz at "
                                               << rate << ", seed " << rng.seed());
                    wave::Environment environment;
                    environment.setSampleRate(rate);
                    SignalSource source(&environment, burst);
                    OpenEqualiser filter(&environment);
                    filter.setInput(&source);
                    filter.set(row.shape, static_cast<FilterSlope>(slope), hz, 24.0f, 4.0f);
                    const std::vector<float> out = play(environment, filter, 30000, 250);
                    const float peak = std::abs(
                        *std::ranges::max_element(out, {}, [](float y) { return std::abs(y); }));
                    CHECK(std::isfinite(peak));
                    CHECK(peak < 100.0f);
                    if (hz > 1.0f) CHECK(std::abs(out.back()) < 1e-2f);
                }
}

TEST_CASE("EQFilter: follows a change of the sample rate and of the slope") {
    wave::Environment environment;
    SignalSource source(&environment, impulse(4096));
    OpenEqualiser filter(&environment);
    filter.setInput(&source);
    filter.set(FilterShape::LowShelf, FilterSlope::Poles2, 4000.0f, 20.0f, 1.0f);
    for (const float rate : {44100.0f, 96000.0f}) {
        environment.setSampleRate(rate);
        filter.reset();
        const double omega = 2.0 * pi * 4000.0 / static_cast<double>(rate);
        const std::vector<float> response = play(environment, filter, 4096);
        CHECK(std::abs(transformAt(response, omega)) == doctest::Approx(std::sqrt(10.0)));
        filter.slope = FilterSlope::Poles6;
    }
    CHECK(filter.getPrototype().getNumSections() == 3);
}

TEST_CASE("EQFilter: takes controls beyond its limits as the nearest, and NaN as the lower one") {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto playWith = [](float log2Hz, float gainDb, float rawQ) {
        wave::Environment environment;
        Rng rng(5);
        SignalSource source(&environment, rng.noise(512));
        SignalSource controls[] = {SignalSource(&environment, log2Hz),
                                   SignalSource(&environment, gainDb),
                                   SignalSource(&environment, rawQ)};
        EQFilter filter(&environment);
        filter.setInput(&source);
        filter.frequency.setSource(&controls[0]);
        filter.gain.setSource(&controls[1]);
        filter.q.setSource(&controls[2]);
        return play(environment, filter, 512);
    };
    CHECK(playWith(-3.0f, 36.0f, 0.0f) == playWith(0.0f, 30.0f, 0.025f));
    CHECK(playWith(80.0f, -36.0f, 1e9f) == playWith(15.0f, -30.0f, 40.0f));
    CHECK(playWith(nan, nan, nan) == playWith(0.0f, -30.0f, 0.025f));
}

TEST_CASE("EQFilter: fades out below 0.05 dB, and at 0 dB its input is handed on") {
    for (const auto shape : {FilterShape::Bell, FilterShape::LowShelf, FilterShape::HighShelf})
        for (const float gainDb : {0.0f, -0.0f, 0.005f, -0.025f, 0.025f, 0.0499f}) {
            INFO("shape " << static_cast<int>(shape) << ", " << gainDb << " dB");
            wave::Environment environment;
            SignalSource source(&environment, impulse(8192));
            OpenEqualiser filter(&environment);
            filter.setInput(&source);
            filter.set(shape, FilterSlope::Poles2, 1000.0f, gainDb, 1.0f);
            const std::vector<float> response = play(environment, filter, 8192);
            CHECK((filter.getOutput() == source.getOutput()) == (gainDb == 0.0f));
            if (gainDb == 0.0f) {
                SignalSource constant(&environment, 0.5f);
                filter.setInput(&constant);
                play(environment, filter, 16);
                CHECK(filter.isConstant());
                turn(filter.gain, 6.0f);
                play(environment, filter, 16);
                CHECK(!filter.isConstant());
                continue;
            }

            const double wet = 20.0 * std::abs(static_cast<double>(gainDb));
            const double designDb = std::copysign(
                std::max(0.01, std::abs(static_cast<double>(gainDb))), static_cast<double>(gainDb));
            AnalogFilterPrototype analog;
            analog.design(shape, 2, std::pow(10.0, designDb / 20.0), std::sqrt(0.5));
            analog.setFrequency(1.0, 1.0);
            for (const double hz : {200.0, 1000.0, 4000.0}) {
                const auto full = analog.getResponse(warpedRatio(hz, 1000.0, 44100.0));
                const double wanted = std::abs(1.0 + wet * (full - 1.0));
                const double heard = std::abs(transformAt(response, 2.0 * pi * hz / 44100.0));
                CHECK(heard == doctest::Approx(wanted).epsilon(2e-6));
            }
        }
}

/// Rises by `perSample` octaves from 32 Hz, over and over.
std::vector<float> sweep(float perSample) {
    std::vector<float> log2Hz;
    for (int i = 0; i < 256; ++i)
        log2Hz.push_back(5.0f + perSample * static_cast<float>(i));
    return log2Hz;
}

TEST_CASE("EQFilter: designs as often as the controls ask for, and every sample has coefficients") {
    wave::Environment environment;
    OpenEqualiser filter(&environment);
    filter.set(FilterShape::Bell, FilterSlope::Poles2, 1000.0f, 6.0f, 1.0f);
    SignalSource standing(&environment, std::vector<float>(8, 9.0f));  // not marked as a constant
    SignalSource slow(&environment, sweep(0.001f));
    SignalSource brisk(&environment, sweep(0.011f));  // 0.1 octaves in 9.1 samples
    SignalSource fast(&environment, sweep(0.026f));
    std::vector<int> byFour(63, 4);
    byFour.back() = 8;  // the schedule is full, and the last but one holds on
    const struct {
        wave::Producer* frequency;
        int numSamples;
        std::vector<int> lengths;
    } rows[] = {
        {nullptr, 101, {101}},
        {&standing, 155, {155}},
        {&slow, 256, std::vector<int>(8, 32)},
        {&slow, 70, {32, 32, 6}},
        {&brisk, 64, {12, 12, 8, 12, 12, 8}},
        {&fast, 7, {4, 3}},
        {&fast, 256, byFour},
    };
    for (const auto& row : rows) {
        INFO("row " << &row - rows);
        filter.frequency.setSource(row.frequency);
        CHECK(filter.runLengths(row.numSamples) == row.lengths);
    }

    SignalSource gains(&environment, sweep(0.05f));
    filter.frequency.setSource(nullptr);
    filter.gain.setSource(&gains);
    CHECK(filter.runLengths(96) == std::vector<int>{32, 32, 32});
    filter.shape = FilterShape::LowPass;
    CHECK(filter.runLengths(96) == std::vector<int>{96});
}

TEST_CASE("EQFilter: same bits for any cut while controls stand, by 32 while they move") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const std::vector<float> noise = rng.noise(4096);
    const auto render = [&](const std::vector<float>& log2Hz, int longest, int multiple) {
        wave::Environment environment;
        SignalSource source(&environment, noise), control(&environment, log2Hz);
        EQFilter filter(&environment);
        filter.setInput(&source);
        filter.frequency.setSource(&control);
        turn(filter.gain, -9.0f);
        std::vector<float> out;
        for (int part = 0; part < 8; ++part) {  // every 512 samples there is a cut in any case
            if (part == 1 || part == 2 || part == 4) filter.enabled = !filter.enabled;
            std::vector<int> pieces = rng.pieces(512 / multiple, longest / multiple);
            for (int& n : pieces)
                n *= multiple;
            const auto piece = test::playPieces(environment, filter, pieces);
            out.insert(out.end(), piece.begin(), piece.end());
        }
        return out;
    };
    const std::vector<float> standing(8, 9.5f), moving = sweep(0.0005f);
    const std::vector<float> expected = render(standing, 256, 256);
    CHECK(render(standing, 256, 1) == expected);
    CHECK(render(standing, 5, 1) == expected);
    const std::vector<float> moved = render(moving, 256, 256);
    CHECK(render(moving, 256, 32) == moved);

    // Other cuts move the samples at which the coefficients step.
    const std::vector<float> movedOtherwise = render(moving, 256, 1);
    float difference = 0.0f;
    for (std::size_t i = 0; i < moved.size(); ++i)
        difference = std::max(difference, std::abs(moved[i] - movedOtherwise[i]));
    CHECK(difference > 0.0f);
    CHECK(difference < 0.05f);
}

TEST_CASE("EQFilter: a change of shape starts from the first input, but not after a reset") {
    wave::Environment environment;
    SignalSource dc(&environment, std::vector<float>(4, 1.0f));
    OpenEqualiser filter(&environment);
    filter.setInput(&dc);
    filter.set(FilterShape::Bell, FilterSlope::Poles2, 500.0f, 12.0f, 1.0f);
    play(environment, filter, 64);
    filter.shape = FilterShape::LowPass;
    for (const float y : play(environment, filter, 512))
        CHECK(y == doctest::Approx(1.0).epsilon(1e-6));
    filter.slope = FilterSlope::Poles12;
    for (const float y : play(environment, filter, 512))
        CHECK(y == doctest::Approx(1.0).epsilon(1e-5));

    filter.reset();
    filter.slope = FilterSlope::Poles4;
    filter.shape = FilterShape::HighPass;
    filter.shape = FilterShape::LowPass;
    CHECK(play(environment, filter, 1)[0] < 1e-4f);
}

}  // namespace
}  // namespace cinder
