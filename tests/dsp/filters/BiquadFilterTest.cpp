#include "dsp/filters/BiquadFilter.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dsp/filters/EQFilter.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;
using test::turn;

/// Twice its input's sample before last, section by section: the first outputs tell the state.
struct Teller final : BiquadFilter {
    explicit Teller(wave::Environment* environment) : BiquadFilter(environment, 2) {}
    void computeCoefficients(int numSamples,
                             BiquadProcessor& target) noexcept CINDER_REALTIME override {
        const BiquadCoefficients sections[] = {{0.0, 1.0, 0.0, 0.0, 0.0},
                                               {0.0, 2.0, 0.0, 0.0, 0.0}};
        target.setNumSections(2);
        target.schedule(sections, 1.0f, numSamples);
    }
    using BiquadFilter::processor;
};

TEST_CASE("BiquadFilter: starts from zero, and from the first input when it was missed") {
    using Samples = std::vector<float>;
    using Mode = BiquadProcessor::ResetMode;
    for (const Mode mode : {Mode::FromZero, Mode::FromFirstInput}) {
        INFO("mode " << static_cast<int>(mode));
        const bool primes = mode == Mode::FromFirstInput;
        wave::Environment environment;
        SignalSource source(&environment, Samples{1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f});
        Teller filter(&environment);
        filter.setInput(&source);
        filter.processor.resetMode = mode;
        CHECK(play(environment, filter, 4) == Samples{0.0f, 0.0f, 2.0f, 4.0f});
        CHECK(play(environment, filter, 2) == Samples{6.0f, 8.0f});

        environment.beginBlock();
        environment.render(2, 0);  // nobody pulls
        CHECK(play(environment, filter, 3) ==
              (primes ? Samples{2.0f, 2.0f, 2.0f} : Samples{0.0f, 0.0f, 2.0f}));

        filter.reset();
        environment.beginBlock();
        environment.render(2, 0);  // a missed block does not soften a reset
        CHECK(play(environment, filter, 3) == Samples{0.0f, 0.0f, 12.0f});
    }
}

/// A bell that raises 1 kHz by 12 dB, over a sine and DC.
struct FadeRig {
    FadeRig() : source(&environment, signal()), filter(&environment) {
        filter.setInput(&source);
        turn(filter.gain, 12.0f);
    }
    static std::vector<float> signal() {
        std::vector<float> samples;
        for (int i = 0; i < 44100; ++i)
            samples.push_back(
                0.5f + 0.1f * static_cast<float>(std::sin(2.0 * std::numbers::pi * i / 44.1)));
        return samples;
    }
    bool passesByPointer() const { return filter.getOutput() == source.getOutput(); }

    wave::Environment environment;
    SignalSource source;
    EQFilter filter;
};

TEST_CASE("BiquadFilter: switched off and on it fades in 20 ms without a click") {
    for (const int switchBackAfter : {100, 441, 4000}) {
        INFO("switched back after " << switchBackAfter);
        FadeRig rig;
        std::vector<float> out = play(rig.environment, rig.filter, 4410);
        const auto append = [&](int n) {
            const std::vector<float> more = play(rig.environment, rig.filter, n, 49);
            out.insert(out.end(), more.begin(), more.end());
        };
        rig.filter.enabled = false;
        append(switchBackAfter);
        CHECK(rig.passesByPointer() == (switchBackAfter > 882));
        rig.filter.enabled = true;
        append(4410);
        float largest = 0.0f;
        for (std::size_t i = 2000; i < out.size(); ++i)
            largest = std::max(largest, std::abs(out[i] - out[i - 1]));
        // 0.4 sin(2 pi t 1 kHz) moves by 0.057 a sample, the ramp by 0.4 / 882.
        CHECK(largest < 0.0575f);
        CHECK(*std::max_element(out.end() - 1000, out.end()) == doctest::Approx(0.9).epsilon(0.01));
    }
}

TEST_CASE("BiquadFilter: a fade takes 20 ms of time, whether pulled, handed on or missed") {
    for (const float gainDb : {12.0f, 0.0f}) {
        FadeRig rig;
        turn(rig.filter.gain, gainDb);
        play(rig.environment, rig.filter, 441, 441 / 3);
        rig.filter.enabled = false;
        play(rig.environment, rig.filter, 294, 147);
        rig.environment.beginBlock();
        rig.environment.render(147, 0);
        turn(rig.filter.gain, 12.0f);
        play(rig.environment, rig.filter, 440, 220);
        play(rig.environment, rig.filter, 1);  // the last sample of the fade
        CHECK(!rig.passesByPointer());
        play(rig.environment, rig.filter, 1);
        CHECK(rig.passesByPointer());
    }
}

TEST_CASE("BiquadFilter: a fade begins when it is switched, not where the last block ended") {
    FadeRig rig;
    play(rig.environment, rig.filter, 441);
    rig.filter.enabled = false;
    play(rig.environment, rig.filter, 4410);
    rig.environment.beginBlock();
    rig.environment.render(256, 0);  // nobody pulls
    rig.filter.enabled = true;
    const std::vector<float> out = play(rig.environment, rig.filter, 49);
    const std::vector<float> dry = FadeRig::signal();
    float farthest = 0.0f;
    for (std::size_t i = 0; i < out.size(); ++i)
        farthest = std::max(farthest, std::abs(out[i] - dry[441 + 4410 + 256 + i]));
    // 49 of 882 samples into the fade of a filter that adds up to 0.3.
    CHECK(farthest < 0.3f * 49.0f / 882.0f);
}

TEST_CASE("BiquadFilter: does not fade before audio has run, and a reset ends a fade") {
    FadeRig rig;
    rig.filter.enabled = false;
    play(rig.environment, rig.filter, 16);
    CHECK(rig.passesByPointer());
    rig.environment.reset(wave::Environment::ResetMode::MarkOnly);
    rig.filter.enabled = true;
    rig.filter.enabled = false;
    play(rig.environment, rig.filter, 16);
    CHECK(rig.passesByPointer());

    rig.filter.enabled = true;
    play(rig.environment, rig.filter, 16);
    rig.filter.reset();  // at once all wet, and the sections start from zero
    const std::vector<float> wet = play(rig.environment, rig.filter, 64);
    FadeRig fresh;
    play(fresh.environment, fresh.source, 48, 16);
    CHECK(play(fresh.environment, fresh.filter, 64) == wet);
}

TEST_CASE("BiquadFilter: back after a pause it starts from the DC that passed it by") {
    wave::Environment environment;
    std::vector<float> level(20000, 0.25f);
    std::fill(level.begin() + 6000, level.end(), -0.75f);
    SignalSource source(&environment, level);
    EQFilter filter(&environment);
    filter.setInput(&source);
    filter.shape = FilterShape::LowPass;
    turn(filter.frequency, 7.0f);
    play(environment, filter, 4096);
    filter.enabled = false;
    play(environment, filter, 4096);
    filter.enabled = true;
    for (const float y : play(environment, filter, 4096))
        REQUIRE(y == doctest::Approx(-0.75).epsilon(1e-5));
}

}  // namespace
}  // namespace cinder
