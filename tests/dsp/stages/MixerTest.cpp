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

/// What the table of operations says: the start, and how each further input joins it.
const struct {
    bool startsAtMagnitude;
    float (*join)(float y, float c);
} operations[] = {
    {false, [](float y, float c) { return y + c; }},
    {false, [](float y, float c) { return y - c; }},
    {true, [](float y, float c) { return std::max(y, std::abs(c)); }},
    {false, [](float y, float c) { return y * c; }},
    {true, [](float y, float c) { return c == 0.0f ? 0.0f : std::min(y / std::abs(c), 1.0f); }},
    {true, [](float y, float c) { return std::max(y, 1e-9f) / std::max(std::abs(c), 1e-9f); }},
    {true, [](float y, float c) { return std::abs(c) > 1e-9f ? y / std::abs(c) : 1.0f; }},
    {false, [](float y, float c) { return std::max(y, c); }},
    {false, [](float y, float c) { return std::min(y, c); }},
};

TEST_CASE("Mixer: every operation combines its connected inputs, however the block is cut") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int operation = 0; operation <= 8; ++operation) {
        const auto& [startsAtMagnitude, join] = operations[operation];
        std::vector<std::vector<float>> signals;
        for (int i : {0, 20, 30}) {
            signals.push_back(rng.noise(length));
            std::fill_n(signals.back().begin() + i, 3, 0.0f);
        }
        for (const int blockSize : {256, 255, 64, 3, 1}) {
            if (operation == 6 && blockSize < 64) continue;  // it holds the end of the last block
            wave::Environment environment;
            Mixer mixer(&environment, 4);
            mixer.operation = static_cast<Mixer::Operation>(operation);
            SignalSource a(&environment, signals[0]), b(&environment, signals[1]);
            SignalSource c(&environment, signals[2]);
            mixer.connect(0, &a), mixer.connect(2, &b), mixer.connect(3, &c);  // 1 unconnected
            mixer.input(2).gain.assign(0.5f);  // jumps: nothing has run yet
            const std::vector<float> out = play(environment, mixer, length, blockSize);
            int wrong = 0;
            for (std::size_t t = 0; t < length; ++t) {
                const float x = signals[0][t];
                const float expected = join(
                    join(startsAtMagnitude ? std::abs(x) : x, signals[1][t] * 0.5f), signals[2][t]);
                wrong += std::abs(out[t] - expected) > 1e-6f * std::max(1.0f, std::abs(expected));
            }
            INFO("operation " << operation << ", block " << blockSize << ", seed " << rng.seed());
            CHECK(wrong == 0);
        }
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
    using enum EffectMixer::PanningLaw;
    constexpr float half = 0.70710678f;
    const struct {
        EffectMixer::PanningLaw law;
        float m, dry, wet;
    } rows[] = {{BothFull, 0.0f, 1.0f, 1.0f},  {BothFull, 0.5f, 0.5f, 1.0f},
                {BothFull, -0.5f, 1.0f, 0.5f}, {Linear, 0.0f, 0.5f, 0.5f},
                {Linear, 0.5f, 0.25f, 0.75f},  {EqualPower, 0.0f, half, half}};
    for (const auto& row : rows) {
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

TEST_CASE("Mixers: controls that jump, also in the middle of a fade, make no step of their own") {
    // The shortest fade takes 882 samples. A sum has two gains in motion, an effect mixer's mix
    // spans 2, and the sine law is steeper than its chord by half of pi.
    constexpr float gainStep = 2.0f / 882.0f, mixStep = 2.0f * 1.5708f / 882.0f;
    wave::Environment environment;
    SignalSource one(&environment, 1.0f), other(&environment, -1.0f);
    Mixer mixer(&environment, 2);
    mixer.connect(0, &one), mixer.connect(1, &other);
    EffectMixer effect(&environment, &one, &other);
    effect.panningLaw = EffectMixer::PanningLaw::EqualPower;
    const auto largestStep = [&](wave::Producer& producer, auto&& turn) {
        float before = play(environment, producer, 1)[0], largest = 0.0f;
        for (int i = 0; i < 12; ++i) {
            turn(i);
            for (const float y : play(environment, producer, i % 2 == 0 ? 300 : 9000)) {
                largest = std::max(largest, std::abs(y - before));
                before = y;
            }
        }
        return largest;
    };
    CHECK(largestStep(mixer, [&](int i) {
              mixer.input(0).gain.assign(i % 3 == 0 ? 0.0f : 1.0f);
              mixer.input(1).gain.assign(i % 2 == 0 ? 1.0f : 0.0f);
          }) < 1.01f * gainStep);
    CHECK(largestStep(effect, [&](int i) { effect.mix.assign(i % 2 == 0 ? 1.0f : -1.0f); }) <
          1.01f * mixStep);
}

}  // namespace
}  // namespace cinder
