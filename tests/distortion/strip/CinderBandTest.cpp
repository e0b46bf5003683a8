#include "distortion/strip/CinderBand.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

#include "distortion/styles/StyleSet.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::Rng;
using test::SignalSource;

/// A constant that can be turned, as a producer.
using Knob = wave::FloatParameterSource;

struct Rig {
    explicit Rig(std::vector<float> samples, int factor = 1, float gateLevel = 1.0f)
        : input(&environment, std::move(samples)),
          converterStyle(&environment),
          gate(&environment, gateLevel) {
        environment.setSampleRate(48000.0f);
        converterStyle.setFactor(factor);
        band.setInput(&input);
        styles.addTo(controller);
        controller.style = static_cast<int>(StyleId::CleanTape);
        controller.addProcessors(&band.getDistortion(), &band.getCabinet());
        controller.applyStyle();
        band.enabled() = 1;
        band.loopCompensation() = converterStyle.getLatency(converterStyle.getFactor());
    }
    static void set(Knob& knob, float value) { knob.parameter.setValue(value, 0.0f); }

    wave::Environment environment;
    SignalSource input;
    sr::IIRConverterStyle converterStyle;
    Capacitor::Style capacitorStyle;
    StyleSet styles;
    DistortionController controller;
    Knob one{&environment, 1.0f};
    Knob gain{&environment, 1.0f, 0.0f, 63.1f}, level{&environment, 1.0f, 0.0f, 63.1f};
    Knob drive{&environment, 0.0f}, tone{&environment, 0.0f, -24.0f, 24.0f};
    Knob mix{&environment, 1.0f, -1.0f, 1.0f}, amount{&environment, 0.0f};
    Knob frequency{&environment, std::log2(250.0f), 3.3f, 10.0f};
    SignalSource gate;
    CinderBand band{&converterStyle,
                    &capacitorStyle,
                    {&gain,
                     &one,
                     &drive,
                     {&tone, &tone, &tone, &tone},
                     &mix,
                     &level,
                     &amount,
                     &frequency,
                     &gate},
                    1};
};

constexpr int fadeEnd = 1000;  // by then the band is on

std::vector<float> impulse(int numSamples) {
    std::vector<float> samples(static_cast<std::size_t>(numSamples));
    samples[fadeEnd] = 0.01f;
    return samples;
}

int peakPosition(const std::vector<float>& samples, int from, int to) {
    const auto peak = std::max_element(samples.begin() + from, samples.begin() + to,
                                       [](float a, float b) { return std::abs(a) < std::abs(b); });
    return static_cast<int>(peak - samples.begin());
}

}  // namespace

TEST_CASE("CinderBand: a band that is off hands its input on, whatever else is set") {
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> noise = rng.noise(4000);
    Rig rig(noise, 8);
    rig.band.enabled() = 0;
    Rig::set(rig.gain, 7.0f);
    Rig::set(rig.level, 0.1f);
    Rig::set(rig.amount, 1.0f);
    const std::vector<float> out = play(rig.environment, rig.band, 4000);
    CHECK(std::equal(out.begin() + 2000, out.end(), noise.begin() + 2000));
}

TEST_CASE("CinderBand: dry is the input in the wet path's time, with the gains of both") {
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> noise = rng.noise(4000, 0.1f);
    Rig rig(noise, 8), alone(noise, 8);
    Rig::set(rig.mix, -1.0f);
    Rig::set(rig.gain, 2.0f);
    Rig::set(rig.level, 0.25f);
    const std::vector<float> out = play(rig.environment, rig.band, 4000);
    const std::vector<float> dry = play(alone.environment, alone.band.getDry(), 4000);
    for (std::size_t i = fadeEnd; i < out.size(); ++i)
        REQUIRE(out[i] == doctest::Approx(0.5f * dry[i]).epsilon(1e-6));
}

TEST_CASE("CinderBand: the loop has the period of its frequency, at every factor") {
    constexpr int period = 192;  // 250 Hz
    for (const int factor : {1, 2, 4, 8}) {
        INFO("factor " << factor);
        Rig rig(impulse(4000), factor);
        Rig::set(rig.amount, 0.9f);
        const std::vector<float> out = play(rig.environment, rig.band, 2000, 128);
        const int first = peakPosition(out, fadeEnd, fadeEnd + 100);
        const int second = peakPosition(out, first + 100, first + 300);
        CHECK(std::abs(second - first - period) <= 1);
        CHECK(out[static_cast<std::size_t>(first)] * out[static_cast<std::size_t>(second)] < 0.0f);
    }
}

TEST_CASE("CinderBand: without an amount the gate isn't asked; a closed gate ends the loop") {
    Rig rig(impulse(4000));
    play(rig.environment, rig.band, 480);
    CHECK(rig.gate.renders == 0);
    Rig::set(rig.amount, 1.0f);
    play(rig.environment, rig.band, 480);
    CHECK(rig.gate.renders > 0);

    for (const bool mutes : {true, false}) {
        Rig closed(impulse(4000), 1, 0.0f);
        closed.band.autoMute() = mutes;
        Rig::set(closed.amount, 1.0f);
        const std::vector<float> out = play(closed.environment, closed.band, 2000, 128);
        const int echo = peakPosition(out, fadeEnd + 150, fadeEnd + 250);
        CHECK((std::abs(out[static_cast<std::size_t>(echo)]) < 1e-4f) == mutes);
    }
}

}  // namespace cinder
