#include "distortion/strip/CinderCompander.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <vector>

#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;
using test::turn;

constexpr int halfSecond = 24000;

struct Rig {
    explicit Rig(std::vector<float> levels) : level(&environment, std::move(levels)) {
        environment.setSampleRate(48000.0f);
        compander.setInput(&level);
    }
    std::vector<float> gainsDb(float dynamics, int numSamples, int blockSize = 64) {
        turn(compander.dynamics, dynamics);
        std::vector<float> gains = play(environment, compander, numSamples, blockSize);
        for (float& gain : gains)
            gain = 20.0f * std::log10(gain);
        return gains;
    }

    wave::Environment environment;
    Capacitor::Style style;
    SignalSource level;
    CinderCompander compander{&environment, &style};
};

float ratioOf(float db) {
    return std::pow(10.0f, db / 20.0f);
}

}  // namespace

TEST_CASE("CinderCompander: dynamics 0 is a gain of 1, and nothing before it runs") {
    Rig rig({0.1f});
    CHECK(rig.gainsDb(0.0f, 200) == std::vector<float>(200, 0.0f));
    CHECK(rig.compander.isConstant());
    CHECK(rig.level.renders == 0);
}

TEST_CASE("CinderCompander: lifts or lowers what lies below -6 dB, by up to 36 dB") {
    struct Case {
        float levelDb, from, to;
    };
    // The knee is 12 dB wide and ends at the threshold, the limit of 36 dB is approached softly.
    constexpr Case cases[] = {{-3.0f, 0.0f, 0.01f},
                              {-12.0f, 1.0f, 5.0f},
                              {-26.0f, 13.5f, 20.01f},
                              {-100.0f, 35.9f, 36.01f}};
    for (const Case& row : cases) {
        INFO("level " << row.levelDb);
        const float up = Rig({ratioOf(row.levelDb)}).gainsDb(1.0f, 10 * halfSecond).back();
        const float down = Rig({ratioOf(row.levelDb)}).gainsDb(-1.0f, 10 * halfSecond).back();
        const float half = Rig({ratioOf(row.levelDb)}).gainsDb(0.5f, 10 * halfSecond).back();
        CHECK(up >= row.from);
        CHECK(up <= row.to);
        CHECK(down == doctest::Approx(-up).epsilon(1e-4));
        CHECK(half == doctest::Approx(0.5f * up).epsilon(1e-4));
    }
}

TEST_CASE("CinderCompander: builds up in half a second, and is gone at once") {
    std::vector<float> levels(10 * halfSecond, ratioOf(-60.0f));
    levels.insert(levels.end(), halfSecond, 1.0f);
    Rig rig(levels);
    const std::vector<float> gains = rig.gainsDb(1.0f, 11 * halfSecond);
    CHECK(gains[halfSecond] == doctest::Approx(0.9f * gains[10 * halfSecond - 1]).epsilon(0.01));
    CHECK(gains[10 * halfSecond + 10] < 0.15f * gains[10 * halfSecond - 1]);  // a fifth of 1 ms
    CHECK(Rig(levels).gainsDb(1.0f, 11 * halfSecond, 37) == gains);
}

TEST_CASE("CinderCompander: those that hear together have the bits of those that are alone") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    wave::Environment environment;
    const Capacitor::Style style;
    std::vector<float> levels = rng.noise(60000);
    std::ranges::for_each(levels, [](float& level) { level = level * level; });
    SignalSource level(&environment, levels);
    std::deque<CinderCompander> together, alone;
    for (int i = 0; i < 3; ++i)
        for (std::deque<CinderCompander>* all : {&together, &alone}) {
            CinderCompander& compander = all->emplace_back(&environment, &style);
            compander.setInput(&level);
            turn(compander.dynamics, 0.5f);
        }
    together[1].hearWith(together[0]);
    together[2].hearWith(together[0]);
    for (int block = 0; block < 400; ++block) {
        INFO("block " << block);
        for (std::deque<CinderCompander>* all : {&together, &alone}) {
            // The first and the second lie still for a while, and stand elsewhere from then on.
            if (block == 100) turn((*all)[1].dynamics, 0.0f);
            if (block == 150) turn((*all)[1].dynamics, -1.0f);
            if (block == 200) turn((*all)[0].dynamics, 0.0f);
            if (block == 300) turn((*all)[0].dynamics, 0.7f);
        }
        const int n = rng.integer(1, 200);
        environment.beginBlock();
        for (std::size_t i = 0; i < 3; ++i) {
            const float* const gains = together[i].pull(n)->data();
            CHECK(std::equal(gains, gains + n, alone[i].pull(n)->data()));
        }
        environment.render(n, 0);
    }
}

}  // namespace cinder
