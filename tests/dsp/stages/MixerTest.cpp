#include "dsp/stages/Mixer.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

#include "dsp/stages/EffectMixer.h"
#include "dsp/stages/StaticMixer.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;

constexpr int length = 700;

/// What the table of operations says, for the inputs of one sample, slowly.
float combined(Mixer::Operation operation, const std::vector<float>& c, float lastRatio) {
    using enum Mixer::Operation;
    const bool magnitude = operation == Peak || operation == RatioLimited ||
                           operation == RatioFloored || operation == RatioHeld;
    float y = magnitude ? std::abs(c[0]) : c[0];
    for (std::size_t i = 1; i < c.size(); ++i) {
        const float a = std::abs(c[i]);
        switch (operation) {
            case Sum:
                y += c[i];
                break;
            case Difference:
                y -= c[i];
                break;
            case Peak:
                y = std::max(y, a);
                break;
            case Product:
                y *= c[i];
                break;
            case RatioLimited:
                y = a == 0.0f ? 0.0f : std::min(y / a, 1.0f);
                break;
            case RatioFloored:
                y = std::max(y, 1e-9f) / std::max(a, 1e-9f);
                break;
            case RatioHeld:
                y = a > 1e-9f ? y / a : lastRatio;
                break;
            case Maximum:
                y = std::max(y, c[i]);
                break;
            case Minimum:
                y = std::min(y, c[i]);
                break;
        }
    }
    return y;
}

TEST_CASE("Mixer: every operation combines its connected inputs as the table says") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int operation = 0; operation <= 8; ++operation) {
        wave::Environment environment;
        Mixer mixer(&environment, 4);
        mixer.operation = static_cast<Mixer::Operation>(operation);
        std::vector<std::vector<float>> signals;
        std::vector<std::unique_ptr<SignalSource>> sources;
        for (int i : {0, 2, 3}) {  // input 1 stays unconnected
            signals.push_back(rng.noise(length));
            std::fill_n(signals.back().begin() + 10 * i, 3, 0.0f);
            sources.push_back(std::make_unique<SignalSource>(&environment, signals.back()));
            mixer.connect(i, sources.back().get());
        }
        mixer.input(2).gain.assign(0.5f);  // jumps: nothing has run yet
        const std::vector<float> out = play(environment, mixer, length, 256);
        int wrong = 0;
        for (std::size_t t = 0; t < length; ++t) {
            const float expected =
                combined(mixer.operation, {signals[0][t], signals[1][t] * 0.5f, signals[2][t]}, 1);
            wrong += std::abs(out[t] - expected) > 1e-6f * std::max(1.0f, std::abs(expected));
        }
        INFO("operation " << operation << ", seed " << rng.seed());
        CHECK(wrong == 0);
    }
}

TEST_CASE("Mixer: a plain sum leaves out what is faded out, and hands on a lone input") {
    wave::Environment environment;
    SignalSource a(&environment, std::vector<float>{1.0f, 2.0f, 3.0f});
    SignalSource b(&environment, 0.25f);
    Mixer mixer(&environment, 2);
    CHECK(play(environment, mixer, 8) == std::vector<float>(8, 0.0f));
    CHECK(mixer.isConstant());

    mixer.connect(0, &a);
    mixer.connect(1, &b);
    mixer.input(1).gain.assign(0.0f);
    play(environment, mixer, 4096);
    const int rendersWhileRamping = b.renders;
    CHECK(play(environment, mixer, 64)[0] != 0.0f);
    CHECK(b.renders == rendersWhileRamping);
    CHECK(mixer.getOutput() == a.getOutput());

    mixer.input(0).gain.assign(0.0f);
    mixer.input(1).gain.assign(1.0f);
    environment.beginBlock();
    mixer.pull(16);
    CHECK_FALSE(mixer.isConstant());  // a constant under a ramping gain moves
    environment.render(16, 0);
    play(environment, mixer, 16384);
    CHECK(mixer.isConstant());
    CHECK((*mixer.getOutput())[0] == 0.25f);
}

TEST_CASE("Mixer: the sum is the same however the block is cut, and its gain ramps do not step") {
    test::Rng rng = test::Rng::fromEnvironment();
    const std::vector<float> x = rng.noise(length), y = rng.noise(length);
    const auto mixed = [&](int blockSize) {
        wave::Environment environment;
        SignalSource a(&environment, x), b(&environment, y);
        Mixer mixer(&environment, 2);
        mixer.connect(0, &a);
        mixer.connect(1, &b);
        mixer.input(0).gain.assign(0.3f);
        return play(environment, mixer, length, blockSize);
    };
    const std::vector<float> whole = mixed(256);
    for (int blockSize : {1, 3, 64, 255}) {
        INFO("block " << blockSize << ", seed " << rng.seed());
        CHECK(mixed(blockSize) == whole);
    }
}

TEST_CASE("StaticMixer: one sample while all is constant, the lone unity input by pointer") {
    wave::Environment environment;
    SignalSource constant(&environment, 0.5f), other(&environment, -0.25f);
    SignalSource moving(&environment, std::vector<float>{1.0f, 2.0f});
    StaticMixer both(&environment, {{2.0f, &constant}, {4.0f, &other}, {1.0f, nullptr}});
    CHECK(play(environment, both, 4) == std::vector<float>(4, 0.0f));
    CHECK(both.isConstant());
    StaticMixer mixed(&environment, {{2.0f, &constant}, {1.0f, &moving}, {4.0f, &other}});
    CHECK(play(environment, mixed, 4) == std::vector<float>{1.0f, 2.0f, 1.0f, 2.0f});
    CHECK_FALSE(mixed.isConstant());
    StaticMixer lone(&environment, {{1.0f, &moving}});
    play(environment, lone, 4);
    CHECK(lone.getOutput() == moving.getOutput());
}

TEST_CASE("EffectMixer: the laws in the middle, and at either end only one side is pulled") {
    struct Row {
        EffectMixer::PanningLaw law;
        float m, dry, wet;
    };
    constexpr float half = 0.70710678f;
    for (const Row& row : {Row{EffectMixer::PanningLaw::BothFull, 0.0f, 1.0f, 1.0f},
                           Row{EffectMixer::PanningLaw::BothFull, 0.5f, 0.5f, 1.0f},
                           Row{EffectMixer::PanningLaw::BothFull, -0.5f, 1.0f, 0.5f},
                           Row{EffectMixer::PanningLaw::Linear, 0.0f, 0.5f, 0.5f},
                           Row{EffectMixer::PanningLaw::Linear, 0.5f, 0.25f, 0.75f},
                           Row{EffectMixer::PanningLaw::EqualPower, 0.0f, half, half}}) {
        wave::Environment environment;
        SignalSource dry(&environment, std::vector<float>{1.0f, 0.0f});
        SignalSource wet(&environment, std::vector<float>{0.0f, 1.0f});
        EffectMixer mixer(&environment, &dry, &wet);
        mixer.panningLaw = row.law;
        mixer.mix.assign(row.m);
        const std::vector<float> out = play(environment, mixer, 2);
        INFO("law " << static_cast<int>(row.law) << ", mix " << row.m);
        CHECK(out[0] == doctest::Approx(row.dry));
        CHECK(out[1] == doctest::Approx(row.wet));
    }
    for (float end : {-1.0f, 1.0f}) {
        wave::Environment environment;
        SignalSource dry(&environment, std::vector<float>{1.0f, 2.0f}), wet(&environment, 3.0f);
        EffectMixer mixer(&environment, &dry, &wet);
        mixer.mix.assign(end);
        play(environment, mixer, 64);
        CHECK(dry.renders == (end < 0.0f ? 1 : 0));
        CHECK(wet.renders == (end < 0.0f ? 0 : 1));
        CHECK(mixer.isConstant() == (end > 0.0f));
    }
}

}  // namespace
}  // namespace cinder
