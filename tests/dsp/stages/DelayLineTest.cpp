#include "dsp/stages/DelayLine.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "dsp/stages/Mixer.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;

constexpr int second = 44100;

std::vector<float> sine(double hz, int numSamples) {
    std::vector<float> out;
    for (int i = 0; i < numSamples; ++i)
        out.push_back(static_cast<float>(std::sin(2.0 * std::numbers::pi * hz * i / second)));
    return out;
}

struct Rig {
    explicit Rig(std::vector<float> signal) : source(&environment, std::move(signal)) {
        line.setInput(&source);
        line.setFeedbackMode(false);
        line.smoothing = false;
    }
    wave::Environment environment;
    SignalSource source;
    DelayLine line{&environment};
};

TEST_CASE("DelayLine: at rest it delays by whole samples, and a hard reset empties it") {
    test::Rng rng = test::Rng::fromEnvironment();
    const std::vector<float> noise = rng.noise(6000);
    using enum DelayLine::DelayInterpretation;
    const struct {
        DelayLine::DelayInterpretation unit;
        float value;
        std::size_t samples;
    } rows[] = {{Milliseconds, 1.07f, 47},  // truncated
                {Milliseconds, 0.0f, 0},
                {Milliseconds, 1e9f, 4410},
                {Samples, 99.5f, 100},
                {Samples, 4410.0f, 4410}};
    for (const auto& row : rows)
        for (int blockSize : {1, 4, 100, 256}) {
            Rig rig(noise);
            rig.line.delayInterpretation = row.unit;
            rig.line.delayTime.assign(row.value);
            INFO("delay " << row.value << ", block " << blockSize << ", seed " << rng.seed());
            std::vector<float> expected(row.samples + 6000);
            std::ranges::copy(noise, expected.begin() + static_cast<int>(row.samples));
            expected.resize(6000);
            for (int run = 0; run < 2; ++run) {
                CHECK(play(rig.environment, rig.line, 6000, blockSize) == expected);
                rig.environment.reset(wave::Environment::ResetMode::All);
            }
        }
}

TEST_CASE("DelayLine: a moving time reads between samples, as late in the ring as early in it") {
    // A ramp as input shows the position that was read: out = time - delay.
    std::vector<float> ramp(12000);
    std::iota(ramp.begin(), ramp.end(), 0.0f);
    for (int lead : {300, 4000, 8000}) {
        Rig rig(ramp);
        rig.line.delayInterpretation = DelayLine::DelayInterpretation::Samples;
        rig.line.delayTime.assign(200.0f);
        play(rig.environment, rig.line, lead, 100);
        rig.line.delayTime.getParameter().setValue(250.0f, 1000.0f);
        const std::vector<float> out = play(rig.environment, rig.line, 2000, 100);
        double worst = 0.0;
        for (int i = 0; i < 2000; ++i)
            worst = std::max(worst, std::abs(static_cast<double>(out[static_cast<std::size_t>(i)]) -
                                             (lead + i - (200.0 + 50.0 * i / second))));
        INFO("after " << lead << " samples");
        CHECK(worst < 2e-3);
    }
}

TEST_CASE("DelayLine: no read type steps by more than the signal when the time jumps") {
    for (int type : {0, 1, 2}) {
        Rig rig(sine(441.0, 3 * second));
        rig.line.readType = static_cast<DelayLine::ReadType>(type);
        rig.line.smoothing = true;
        rig.line.delayTime.assign(5.0f);
        std::vector<float> out = play(rig.environment, rig.line, 4410, 100);
        rig.line.delayTime.getParameter().setValue(31.0f, type == 2 ? 0.0f : 200.0f);
        const std::vector<float> more = play(rig.environment, rig.line, 2 * second, 100);
        out.insert(out.end(), more.begin(), more.end());
        float largest = 0.0f;
        for (std::size_t i = 300; i < out.size(); ++i)
            largest = std::max(largest, std::abs(out[i] - out[i - 1]));
        INFO("read type " << type);
        const float ownStep = static_cast<float>(2.0 * std::numbers::pi * 441.0 / second);
        CHECK(largest < 1.6f * ownStep);
        // In the end the new delay stands: 31 ms is 1367 samples.
        const std::vector<float> expected = sine(441.0, 3 * second);
        const std::size_t last = out.size() - 1;
        CHECK(out[last] == doctest::Approx(expected[last - 1367]).epsilon(1e-3));
    }
}

TEST_CASE("DelayLine: a loop through it repeats") {
    wave::Environment environment;
    std::vector<float> click(2000);
    click[0] = 1.0f;
    SignalSource source(&environment, click);
    DelayLine line(&environment);
    Mixer sum(&environment, 2);
    sum.connect(0, &source);
    sum.connect(1, &line);
    sum.input(1).gain.assign(0.5f);
    line.setInput(&sum);
    line.smoothing = false;
    line.delayInterpretation = DelayLine::DelayInterpretation::Samples;
    line.delayTime.assign(500.0f);
    const std::vector<float> out = play(environment, sum, 2000, 100);
    for (std::size_t i = 0; i < out.size(); ++i)
        CHECK(out[i] == (i % 500 ? 0.0f : std::ldexp(1.0f, -static_cast<int>(i / 500))));
}

}  // namespace
}  // namespace cinder
