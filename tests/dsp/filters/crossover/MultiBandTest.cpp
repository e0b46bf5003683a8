#include "dsp/filters/crossover/MultiBand.h"

#include <doctest/doctest.h>

#include <memory>
#include <utility>

#include "dsp/filters/Bilinear.h"
#include "dsp/filters/crossover/SplitRig.h"

namespace cinder {
namespace {

using test::largestStep;
using test::Rng;
using test::Samples;
using test::SignalSource;
using test::SplitRig;

static_assert(allPassesFor(0) == 0 && allPassesFor(1) == 0 && allPassesFor(2) == 1 &&
              allPassesFor(3) == 2 && allPassesFor(4) == 4 && allPassesFor(5) == 6);

TEST_CASE("MultiBand: the bands sum to a magnitude of 1") {
    Rng rng = Rng::fromEnvironment();
    for (const float rate : {44100.0f, 48000.0f, 96000.0f, 192000.0f})
        for (const auto slope : test::allSlopes)
            for (int bands = 1; bands <= 6; ++bands) {
                const std::vector<double> hz = test::ascendingHz(rng, bands - 1, 40.0, 18000.0);
                INFO("rate " << rate << ", slope " << static_cast<int>(slope) << ", bands " << bands
                             << ", seed " << rng.seed());
                const int length = rate > 50000.0f ? 65536 : 32768;
                SplitRig rig(rate, test::impulse(length));
                rig.set(bands, slope, hz);
                CHECK(rig.split.getWiredBandCount() == bands);
                const Samples sum = SplitRig::sumOf(rig.play(length));
                double worst = 0.0;
                const auto measure = [&](double at) {
                    const double cycles = at / static_cast<double>(rate);
                    const double db = 20.0 * std::log10(std::abs(test::responseOf(sum, cycles)));
                    worst = std::max(worst, std::abs(db));
                };
                for (const double at : hz)
                    measure(at);
                for (int i = 0; i < 6; ++i)
                    measure(20.0 * std::pow(1000.0, rng.real(0.0, 1.0)));
                CHECK(worst < 0.01);
            }
}

/// The all-pass of a Butterworth pair, in double precision from end to end.
std::vector<double> butterworthAllPass(const Samples& x, double k) {
    const double m = 1.0 / (1.0 + std::numbers::sqrt2 * k + k * k);
    const double a1 = 2.0 * (k * k - 1.0) * m, a2 = (1.0 - std::numbers::sqrt2 * k + k * k) * m;
    std::vector<double> out;
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
    for (const float sample : x) {
        const auto in = static_cast<double>(sample);
        const double y = a2 * in + a1 * x1 + x2 - a1 * y1 - a2 * y2;
        x2 = std::exchange(x1, in);
        y2 = std::exchange(y1, y);
        out.push_back(y);
    }
    return out;
}

TEST_CASE("MultiBand: two bands of 24 dB an octave are the Butterworth all-pass, to the rounding") {
    // Of the floats between sections and of the sum: white, at full scale 24 bits down.
    Rng rng(7);
    const Samples noise = rng.noise(48000);
    for (const double hz : {30.0, 300.0, 3000.0, 16000.0}) {
        INFO("at " << hz << " Hz");
        SplitRig rig(48000.0f, noise);
        rig.set(2, CrossoverSlope::Db24, {hz});
        const Samples sum = SplitRig::sumOf(rig.play(48000));
        const float tangent =
            bilinearTangent(angularFrequency(static_cast<float>(std::log2(hz)), 48000.0f));
        const std::vector<double> expected =
            butterworthAllPass(noise, static_cast<double>(tangent));
        double error = 0.0, power = 0.0;
        for (std::size_t i = 0; i < sum.size(); ++i) {
            error += std::pow(static_cast<double>(sum[i]) - expected[i], 2.0);
            power += expected[i] * expected[i];
        }
        CHECK(10.0 * std::log10(error / power) < -145.0);
    }
}

TEST_CASE("MultiBand: bands of 6 dB an octave sum to the input") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Samples noise = rng.noise(8000);
    for (int bands = 1; bands <= 6; ++bands) {
        SplitRig rig(44100.0f, noise);
        rig.set(bands, CrossoverSlope::Db6, test::ascendingHz(rng, bands - 1, 40.0, 18000.0));
        const Samples sum = SplitRig::sumOf(rig.play(8000));
        float worst = 0.0f;
        for (std::size_t i = 0; i < sum.size(); ++i)
            worst = std::max(worst, std::abs(sum[i] - noise[i]));
        CHECK(worst < 1e-6f);
    }
}

TEST_CASE("MultiBand: one band is the input itself, and those beyond the count are silent") {
    SplitRig rig(44100.0f, Rng(1).noise(1000));
    rig.play(256);
    CHECK(rig.split.getOutput(0)->getOutput() == rig.source.getOutput());
    for (int bands = 1; bands <= 6; ++bands) {
        rig.model.bandCount.assign(bands);
        rig.play(2048);
        for (int i = 0; i < 6; ++i) {
            const bool isSilent = i >= bands;
            CHECK((rig.split.getOutput(i)->getOutput() == rig.environment.getZeroBlock()) ==
                  isSilent);
            CHECK(rig.split.getOutput(i)->isConstant() == isSilent);
        }
    }
    SignalSource constant(&rig.environment, 0.5f);
    rig.split.setInput(&constant);
    rig.model.bandCount.assign(1);
    rig.play(2048);
    CHECK(rig.split.getOutput(0)->isConstant());
}

TEST_CASE("MultiBand: bits do not depend on the cut of the block, nor do fades") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Samples noise = rng.noise(16000);
    SplitRig::Bands reference;
    for (int run = 0; run < 3; ++run) {
        SplitRig rig(44100.0f, noise);
        SplitRig::Bands bands;
        for (const int count : {3, 6, 1, 4}) {
            rig.model.bandCount.assign(count);
            rig.play(bands, run == 0 ? std::vector<int>(8, 250) : rng.pieces(2000, 200));
        }
        if (run == 0) reference = bands;
        CHECK(bands == reference);
    }
}

TEST_CASE("MultiBand: crossovers may jump all over the range at any speed") {
    // Where filters carry their last outputs over, this ends beyond every number. At 11 kHz most of
    // the range is beyond half the rate, and a band there starts with next to no bandwidth.
    constexpr int numSamples = 20000, numCrossovers = 5;
    for (const float rate : {11025.0f, 48000.0f, 192000.0f})
        for (const int period : {1, 6, 48, 500}) {
            INFO("rate " << rate << ", jumps every " << period);
            Rng rng(3);
            const Samples noise = rng.noise(numSamples);
            SplitRig rig(rate, noise);
            rig.set(numCrossovers + 1, CrossoverSlope::Db24, {});
            std::vector<std::unique_ptr<SignalSource>> moves;
            for (int i = 0; i < numCrossovers; ++i) {
                Samples log2Hz;
                for (int at = 0; at < numSamples; ++at)
                    log2Hz.push_back(at % period == 0 ? static_cast<float>(rng.real(5.3, 14.2))
                                                      : log2Hz.back());
                moves.push_back(std::make_unique<SignalSource>(&rig.environment, log2Hz));
                rig.split.getCrossover(i).frequency.setSource(moves.back().get());
            }
            const Samples sum = SplitRig::sumOf(rig.play(numSamples));
            double inPower = 0.0, outPower = 0.0;
            for (std::size_t i = 0; i < sum.size(); ++i) {
                inPower += std::pow(static_cast<double>(noise[i]), 2.0);
                outPower += std::pow(static_cast<double>(sum[i]), 2.0);
            }
            CHECK(outPower / inPower < (rate > 40000.0f ? 12.0 : 80.0));
        }
}

TEST_CASE("MultiBand: a sine takes no step of its own while bands come and go") {
    // Settled, the sum of a sine moves by 2 a sin(w / 2) a sample. A fade between two phases of it
    // adds 2 a over its length, and what the new tree starts with is worth as much again.
    constexpr double amplitude = 0.5, fade = 882.0;
    for (const double hz : {60.0, 440.0, 5000.0}) {
        const double ownStep = 2.0 * amplitude * std::sin(std::numbers::pi * hz / 44100.0);
        const double bound = ownStep + 4.0 * amplitude / fade;
        for (const auto slope : {CrossoverSlope::Db24, CrossoverSlope::Db48})
            for (const int period : {3000, 300}) {  // the shorter one comes in the middle of fades
                INFO(hz << " Hz, slope " << static_cast<int>(slope) << ", a count every "
                        << period);
                SplitRig rig(44100.0f, test::sine(amplitude, hz / 44100.0, 44100));
                rig.set(1, slope, {90.0, 350.0, 1200.0, 4000.0, 11000.0});
                SplitRig::Bands bands;
                for (const int count : {1, 6, 2, 5, 3, 4, 1, 2, 6, 5, 1}) {
                    rig.model.bandCount.assign(count);
                    rig.play(bands, std::vector<int>(static_cast<std::size_t>(period / 60), 60));
                }
                CHECK(rig.split.getWiredBandCount() == 1);
                CHECK(largestStep(SplitRig::sumOf(bands)) < bound);
                for (const Samples& band : bands)
                    CHECK(largestStep(band) < bound);
            }
    }
}

TEST_CASE("MultiBand: a sine takes no step of its own while crossovers move") {
    // A moving crossover turns the phase, most where the sine is: an all-pass of sections with
    // quality q by 2 / q a neper. So the sum moves by no more than a sine of a frequency higher by
    // that; but a quarter, since the filters do not follow at once.
    constexpr double amplitude = 0.5;
    struct {
        CrossoverSlope slope;
        double radiansPerNeper;
    } const slopes[] = {{CrossoverSlope::Db24, 2.83}, {CrossoverSlope::Db48, 5.23}};
    struct {
        std::vector<float> log2Hz;
        double octavesPerSample;
    } const moves[] = {{{5.0f, 9.0f, 13.0f, 5.0f, 13.5f, 10.0f}, 8.5 / 882.0},
                       {{7.0f, 7.5f, 8.0f, 8.5f, 8.0f, 7.2f}, 1.0 / 4350.0}};
    for (const double hz : {60.0, 440.0, 5000.0})
        for (const auto& slope : slopes)
            for (const auto& move : moves) {
                SplitRig rig(44100.0f, test::sine(amplitude, hz / 44100.0, 88200));
                rig.set(6, slope.slope, {128.0, 137.0, 147.0, 157.0, 169.0});
                SplitRig::Bands bands;
                rig.play(bands, std::vector<int>(80, 100));
                for (const float log2Hz : move.log2Hz) {
                    for (int i = 0; i < 5; ++i)
                        rig.split.getCrossover(i).frequency.assign(log2Hz +
                                                                   0.1f * static_cast<float>(i));
                    rig.play(bands, std::vector<int>(70, 100));
                }
                const double turn =
                    5.0 * slope.radiansPerNeper * std::numbers::ln2 * move.octavesPerSample;
                const double bound =
                    amplitude * (2.0 * std::sin(std::numbers::pi * hz / 44100.0) + turn);
                CHECK(largestStep(SplitRig::sumOf(bands)) < 1.25 * bound);
                for (const Samples& band : bands)
                    CHECK(largestStep(band) < 1.25 * bound);
            }
}

/// Two channels of a stereo split beside two that know nothing of each other.
TEST_CASE("MultiBand: linked channels give the bits of two plain ones") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    wave::Environment environment;
    CrossoverMultiBandModel model;
    model.bandCount.assign(3);
    SignalSource inputs[] = {{&environment, rng.noise(30000)}, {&environment, rng.noise(30000)}};
    Samples wobble;
    for (int i = 0; i < 2048; ++i)
        wobble.push_back(8.0f + 0.003f * static_cast<float>(std::abs(i - 1024)));
    SignalSource control(&environment, wobble);
    MultiBand splits[] = {{&environment, &model},
                          {&environment, &model},
                          {&environment, &model},
                          {&environment, &model}};
    for (int c = 0; c < 4; ++c) {
        splits[c].setInput(&inputs[c % 2]);
        splits[c].getCrossover(1).frequency.setSource(&control);
    }
    model.bandCount.assign(5);
    splits[0].link(splits[1]);
    bool same = true;
    const auto run = [&](const std::vector<int>& pieces, int firstChannel) {
        test::RealtimeGuard guard;
        for (const int n : pieces) {
            environment.beginBlock();
            for (const int c : {firstChannel, 1 - firstChannel})
                for (int i = 0; i < 6; ++i) {
                    const float* const a = splits[c].getOutput(i)->pull(n)->data();
                    const float* const b = splits[c + 2].getOutput(i)->pull(n)->data();
                    same = same && std::equal(a, a + n, b);
                }
            environment.render(n, 0);
        }
    };
    run(rng.pieces(3000, 256), 0);
    CHECK(same);
    for (const int count : {6, 2, 4, 4, 1, 3, 6, 5}) {
        {
            UpdateBracket bracket(model);
            model.bandCount.assign(count);
            model.getCrossover(0).frequency = static_cast<float>(rng.real(5.0, 9.0));
        }
        run(rng.pieces(rng.integer(200, 2500), 256), count % 2);
        CHECK(same);
    }
    environment.reset(wave::Environment::ResetMode::All);
    model.bandCount.assign(6);
    run(rng.pieces(1000, 256), 1);
    CHECK(same);
    CHECK(!splits[1].isFading());
}

}  // namespace
}  // namespace cinder
