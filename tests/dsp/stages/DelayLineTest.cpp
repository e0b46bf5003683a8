#include "dsp/stages/DelayLine.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

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

TEST_CASE("DelayLine: at rest it delays by whole samples, truncated from milliseconds") {
    test::Rng rng = test::Rng::fromEnvironment();
    const std::vector<float> noise = rng.noise(6000);
    struct Row {
        DelayLine::DelayInterpretation unit;
        float value;
        int samples;
    };
    for (const Row& row : {Row{DelayLine::DelayInterpretation::Milliseconds, 1.07f, 47},
                           Row{DelayLine::DelayInterpretation::Milliseconds, 0.0f, 0},
                           Row{DelayLine::DelayInterpretation::Milliseconds, 1e9f, 4410},
                           Row{DelayLine::DelayInterpretation::Samples, 99.5f, 100},
                           Row{DelayLine::DelayInterpretation::Samples, 4410.0f, 4410}})
        for (int blockSize : {1, 4, 100, 256}) {
            Rig rig(noise);
            rig.line.delayInterpretation = row.unit;
            rig.line.delayTime.assign(row.value);
            const std::vector<float> out = play(rig.environment, rig.line, 6000, blockSize);
            std::vector<float> expected(static_cast<std::size_t>(row.samples), 0.0f);
            expected.insert(expected.end(), noise.begin(), noise.end() - row.samples);
            INFO("delay " << row.value << ", block " << blockSize << ", seed " << rng.seed());
            CHECK(out == expected);
        }
}

TEST_CASE("DelayLine: a moving time reads between samples, as late in the ring as early in it") {
    // A ramp as input shows the position that was read: out = time - delay.
    for (int lead : {300, 4000, 8000}) {
        std::vector<float> ramp;
        for (int i = 0; i < 12000; ++i)
            ramp.push_back(static_cast<float>(i));
        Rig rig(ramp);
        rig.line.delayInterpretation = DelayLine::DelayInterpretation::Samples;
        rig.line.delayTime.assign(200.0f);
        play(rig.environment, rig.line, lead, 100);
        rig.line.delayTime.getParameter().setValue(250.0f, 1000.0f);
        const std::vector<float> out = play(rig.environment, rig.line, 2000, 100);
        double worst = 0.0;
        for (int i = 0; i < 2000; ++i) {
            const double delay = 200.0 + 50.0 * i / second;
            worst = std::max(worst, std::abs(static_cast<double>(out[static_cast<std::size_t>(i)]) -
                                             (lead + i - delay)));
        }
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

TEST_CASE("DelayLine: a loop through it repeats, and a hard reset empties it") {
    wave::Environment environment;
    std::vector<float> click(4000, 0.0f);
    click[0] = 1.0f;
    SignalSource source(&environment, click);
    DelayLine line(&environment);
    // The loop: what goes in is the click plus half of what came out.
    class Sum final : public wave::Source {
    public:
        Sum(wave::Environment* e, wave::Producer* a, wave::Producer* b) : Source(e), a(a), b(b) {}
        void render(wave::BasicBlock<float>* block, int n,
                    unsigned) noexcept CINDER_REALTIME override {
            const float* const x = a->pull(n)->data();
            const float* const y = b->pull(n)->data();
            for (int i = 0; i < n; ++i)
                (*block)[i] = x[i] + 0.5f * y[i];
        }
        wave::Producer *a, *b;
    } sum(&environment, &source, &line);
    line.setInput(&sum);
    line.smoothing = false;
    line.delayInterpretation = DelayLine::DelayInterpretation::Samples;
    line.delayTime.assign(500.0f);
    const std::vector<float> out = play(environment, sum, 2000, 100);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const bool isEcho = i % 500 == 0;
        CHECK(out[i] == (isEcho ? std::ldexp(1.0f, -static_cast<int>(i / 500)) : 0.0f));
    }
    environment.reset(wave::Environment::ResetMode::All);
    CHECK(play(environment, line, 1000, 100) == std::vector<float>(1000, 0.0f));
}

}  // namespace
}  // namespace cinder
