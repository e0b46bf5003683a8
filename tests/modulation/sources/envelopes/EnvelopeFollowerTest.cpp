#include "modulation/sources/envelopes/EnvelopeFollower.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace {

using namespace cinder;
using namespace cinder::test;

struct Rig {
    explicit Rig(std::vector<float> x, float rate = 48000.0f) : signal(&environment, std::move(x)) {
        environment.setSampleRate(rate);
        follower.setInput(&signal);
    }
    std::vector<float> play(const std::vector<int>& pieces) {
        return playPieces(environment, follower, pieces);
    }

    wave::Environment environment;
    SignalSource signal;
    EnvelopeFollower follower{&environment};
};

/// The formula sample by sample, in double precision.
std::vector<float> expected(const std::vector<float>& x, const std::vector<float>& attack,
                            const std::vector<float>& release, double rate) {
    double level = -180.0;
    std::vector<float> out;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double magnitude = std::abs(static_cast<double>(x[i]));
        const double v =
            magnitude > 1e-10 ? std::max(20.0 * std::log10(magnitude), -180.0) : -180.0;
        const double d = std::max(0.0, v + 60.0) - level;
        const auto& times = d <= 0.0 ? release : attack;
        const double t = static_cast<double>(times[i % times.size()]) * rate;
        level += d * (1.0 - std::exp(-std::log(10.0) / t));
        out.push_back(static_cast<float>(level / 60.0));
    }
    return out;
}

/// Tones that come and go, with pauses of all kinds of silence.
std::vector<float> music(Rng& rng, int length) {
    std::vector<float> x;
    while (static_cast<int>(x.size()) < length) {
        const double peak = std::pow(10.0, rng.real(-5.0, 0.5));
        const bool isSilent = rng.integer(0, 3) == 0;
        const double speed = rng.real(0.001, 1.0);
        const int burst = rng.integer(10, 3000);
        for (int i = 0; i < burst; ++i)
            x.push_back(isSilent ? 0.0f : static_cast<float>(peak * std::sin(speed * i)));
    }
    x.resize(static_cast<std::size_t>(length));
    return x;
}

}  // namespace

TEST_CASE("EnvelopeFollower: follows the formula in every instruction set, for any cut") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 30000;
    for (const simd::InstructionSet set : simd::supportedSets())
        for (const float rate : {44100.0f, 192000.0f})
            for (const bool moves : {false, true}) {
                INFO(simd::nameOf(set) << ", rate " << rate << (moves ? ", moving" : ""));
                const simd::ScopedInstructionSet scope(set);
                const std::vector<float> x = music(rng, length);
                std::vector<float> times[2] = {{0.0007f}, {0.08f}};
                for (int i = 1; moves && i < 1000; ++i) {
                    times[0].push_back(0.0007f + 1e-5f * static_cast<float>(i));
                    times[1].push_back(0.08f * std::cos(0.001f * static_cast<float>(i)));
                }
                const auto render = [&](const std::vector<int>& pieces) {
                    Rig rig(x, rate);
                    SignalSource attack(&rig.environment, times[0]);
                    SignalSource release(&rig.environment, times[1]);
                    if (moves) {
                        rig.follower.attack.setSource(&attack);
                        rig.follower.release.setSource(&release);
                    } else {
                        turn(rig.follower.attack, times[0][0]);
                        turn(rig.follower.release, times[1][0]);
                    }
                    return rig.play(pieces);
                };
                const std::vector<float> out = render(evenPieces(length, 256));
                const std::vector<float> twin =
                    expected(x, times[0], times[1], static_cast<double>(rate));
                for (std::size_t i = 0; i < out.size(); ++i)
                    REQUIRE(std::abs(out[i] - twin[i]) < 3e-6f);
                const std::vector<float> cut = render(rng.pieces(length, 100));
                for (std::size_t i = 0; i < out.size(); ++i)
                    REQUIRE(std::abs(out[i] - cut[i]) <= 2e-9f);
            }
}

TEST_CASE("EnvelopeFollower: comes to rest on silence, reads no control there, and wakes") {
    std::vector<float> x(100, 0.5f);
    x.resize(48000, 0.000998f);
    Rig rig(x);
    turn(rig.follower.release, 0.05f);
    rig.play(evenPieces(47000, 250));
    CHECK(rig.follower.isConstant());
    CHECK(rig.follower.getSourceValue() == 0.0f);
    SignalSource time(&rig.environment, 0.01f);
    rig.follower.attack.setSource(&time);
    rig.play({250, 250, 250, 250});
    CHECK(time.renders == 0);
    CHECK(rig.play({100})[99] > 0.0f);
    CHECK(!rig.follower.isConstant());
}

TEST_CASE("EnvelopeFollower: followers that share levels hear what each would hear alone") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 20000;
    wave::Environment environment;
    SignalSource inputs[3] = {{&environment, music(rng, length)},
                              {&environment, music(rng, length)},
                              {&environment, music(rng, length)}};
    FollowerLevels levels(&environment);
    std::vector<std::unique_ptr<EnvelopeFollower>> sharing, alone;
    for (const int choice : {0, 1, 0, 2, 1, 0})
        for (auto* all : {&sharing, &alone}) {
            all->push_back(std::make_unique<EnvelopeFollower>(&environment,
                                                              all == &sharing ? &levels : nullptr));
            all->back()->setInput(&inputs[choice]);
            turn(all->back()->release, 0.01f * static_cast<float>(all->size()));
        }
    // Each is modulated by the next one: the first pull runs through all of them.
    for (std::size_t i = 0; i + 1 < alone.size(); ++i) {
        alone[i]->attack.setSource(alone[i + 1].get());
        sharing[i]->attack.setSource(sharing[i + 1].get());
    }
    for (const int n : rng.pieces(length, 256)) {
        environment.beginBlock();
        for (std::size_t i = 0; i < alone.size(); ++i) {
            const float* const a = alone[i]->pull(n)->data();
            REQUIRE(std::equal(a, a + n, sharing[i]->pull(n)->data()));
        }
        environment.render(n, 0);
    }
}

TEST_CASE("EnvelopeFollower: nothing poisons it") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float rate : {1e-3f, 48000.0f, 3e38f}) {
        Rig rig({nan, infinity, -infinity, 1e-40f, 3e38f, 0.5f, -nan}, rate);
        SignalSource hostile(&rig.environment, {nan, -1.0f, 0.0f, infinity, -infinity, 1e-30f});
        rig.follower.attack.setSource(&hostile);
        rig.follower.release.setSource(&hostile);
        for (const float y : rig.play(evenPieces(4000, 256)))
            REQUIRE(std::isfinite(y));
    }
}
