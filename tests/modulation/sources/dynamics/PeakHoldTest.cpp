#include "modulation/sources/dynamics/PeakHold.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/simd/InstructionSet.h"
#include "support/Rng.h"
#include "support/StageRig.h"

#include <doctest/doctest.h>

namespace {

using namespace cinder;
using namespace cinder::test;

constexpr float rate = 192000.0f;
constexpr int longestWindow = 384;  // 2 ms

float holdMsOf(int window) {
    return (static_cast<float>(window) + 0.5f) / rate * 1000.0f;
}

/// The definition, sample by sample.
std::vector<float> slidingMaximum(const std::vector<float>& x, const std::vector<int>& windows) {
    std::vector<float> out;
    for (std::size_t n = 0; n < x.size(); ++n) {
        const auto window = static_cast<std::size_t>(windows[std::min(n, windows.size() - 1)]);
        float largest = 0.0f;
        for (std::size_t i = n - std::min(n, window); i <= n; ++i)
            largest = std::max(largest, std::abs(x[i]));
        out.push_back(largest);
    }
    return out;
}

/// Noise, a slow sine, plateaus of equal values, lone peaks, a fall with steps, and one that is all
/// peaks.
std::vector<std::vector<float>> signals(Rng& rng, int length) {
    std::vector<std::vector<float>> all{rng.noise(length)};
    for (int kind = 0; kind < 5; ++kind) {
        std::vector<float> x;
        for (int n = 0; n < length; ++n) {
            const auto t = static_cast<double>(n);
            const double value = kind == 0   ? std::sin(t * 0.01)
                                 : kind == 1 ? std::floor(rng.real(-4.0, 4.0)) / 4.0
                                 : kind == 2 ? (rng.integer(0, 300) == 0 ? rng.real(-1, 1) : 0.0)
                                 : kind == 3 ? std::exp(-t * 0.002) + (n % 97 == 0 ? 0.1 : 0.0)
                                             : std::exp(-t * 1e-4) * (n % 2);
            x.push_back(static_cast<float>(value));
        }
        all.push_back(x);
    }
    return all;
}

struct HoldFixture {
    HoldFixture(std::vector<float> x) : signal(&environment, std::move(x)) {
        environment.setSampleRate(rate);
        stage.reset();
        stage.setInput(&signal);
    }
    wave::Environment environment;
    SignalSource signal;
    PeakHold stage{&environment};
};

}  // namespace

TEST_CASE("PeakHold: the sliding maximum at every window, standing or moving, on every set") {
    Rng rng = Rng::fromEnvironment();
    constexpr int length = 1200;
    for (const auto& x : signals(rng, length))
        for (int window = 0; window <= longestWindow; window += window < 70 ? 1 : 13) {
            INFO("window " << window << ", seed " << rng.seed());
            const std::vector<int> pieces = rng.pieces(length, 256);
            const std::vector<float> expected = slidingMaximum(x, {window});
            for (const simd::InstructionSet set : simd::supportedSets()) {
                const simd::ScopedInstructionSet scoped(set);
                INFO("set " << simd::nameOf(set));
                HoldFixture standing(x);
                turn(standing.stage.hold, holdMsOf(window));
                CHECK(playPieces(standing.environment, standing.stage, pieces) == expected);
            }
            HoldFixture moving(x);
            SignalSource hold(&moving.environment, std::vector{holdMsOf(window)});
            moving.stage.hold.setSource(&hold);
            CHECK(playPieces(moving.environment, moving.stage, pieces) == expected);
        }
}

TEST_CASE("PeakHold: a window that wanders, jumps, stops and moves on") {
    Rng rng = Rng::fromEnvironment();
    constexpr int length = 20000;
    for (const auto& x : signals(rng, length))
        for (int largestStep : {1, 7, longestWindow}) {
            INFO("largest step " << largestStep << ", seed " << rng.seed());
            std::vector<int> windows{longestWindow / 2};
            while (windows.size() < x.size())
                windows.push_back(std::clamp(
                    windows.back() + rng.integer(-largestStep, largestStep), 0, longestWindow));
            HoldFixture rig(x);
            std::vector<float> holds(windows.begin(), windows.end());
            std::ranges::transform(windows, holds.begin(), holdMsOf);
            SignalSource hold(&rig.environment, holds);
            std::vector<float> out;
            for (int n : rng.pieces(length, 256)) {
                // Now and then the window stands still for a block, at its first value.
                const std::size_t start = out.size();
                const bool stands = rng.integer(0, 2) == 0;
                if (stands) {
                    std::fill_n(windows.begin() + static_cast<std::ptrdiff_t>(start), n,
                                windows[start]);
                    turn(rig.stage.hold, holdMsOf(windows[start]));
                }
                rig.stage.hold.setSource(stands ? nullptr : &hold);
                const std::vector<float> piece = playPieces(rig.environment, rig.stage, {n});
                out.insert(out.end(), piece.begin(), piece.end());
            }
            CHECK(out == slidingMaximum(x, windows));
        }
}

TEST_CASE("PeakHold: a reset forgets, and a new rate brings its own longest window") {
    for (bool moves : {false, true}) {
        INFO("moving window " << moves);
        wave::Environment environment;
        std::vector<float> peak(100, 0.0f);
        peak[0] = 1.0f;
        SignalSource signal(&environment, peak);
        PeakHold stage(&environment);
        SignalSource hold(&environment, std::vector{2.0f});
        stage.setInput(&signal);
        if (moves) stage.hold.setSource(&hold);
        turn(stage.hold, 2.0f);
        CHECK(playPieces(environment, stage, {10}).back() == 1.0f);
        environment.reset(wave::Environment::ResetMode::All);
        CHECK(playPieces(environment, stage, {10}).front() == 0.0f);

        environment.setSampleRate(rate);
        std::vector<float> x(700, 0.0f);
        x[40] = 2.0f;
        SignalSource later(&environment, x);
        stage.setInput(&later);
        const std::vector<float> out = playPieces(environment, stage, evenPieces(640, 256));
        CHECK(std::count(out.begin(), out.end(), 2.0f) == longestWindow + 1);
    }
}

TEST_CASE("PeakHold: whatever comes in, no NaN goes out and none is remembered") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> x{0.25f, nan, 0.5f, -nan, 0.125f, -infinity, 0.0f, 0.0f, 0.0f, nan};
    const std::vector<float> holds{nan, -1.0f, holdMsOf(2), 1e30f, infinity, nan, holdMsOf(1)};
    const std::vector<float> expected{0.25f, 0.0f, 0.5f, 0.5f, 0.5f, infinity, infinity, 0, 0, 0};
    HoldFixture rig(x);
    SignalSource hold(&rig.environment, holds);
    rig.stage.hold.setSource(&hold);
    CHECK(playPieces(rig.environment, rig.stage, {10}) == expected);
}
