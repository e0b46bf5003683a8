#include "modulation/sources/envelopes/Trigger.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "support/Rng.h"
#include "support/StageRig.h"

namespace {

using namespace cinder;
using namespace cinder::test;

using Kind = Trigger::Event::Kind;
struct Found {
    Kind kind;
    int sample;  // from the start of the signal
    bool operator==(const Found&) const = default;
};
using Events = std::vector<Found>;

/// The rules sample by sample.
Events expectedEvents(const std::vector<float>& levels, float threshold, int quietLimit) {
    Events events;
    bool open = false;
    int quiet = 0;
    for (int i = 0; i < static_cast<int>(levels.size()); ++i) {
        const float x = levels[static_cast<std::size_t>(i)];
        if (!open && x > threshold + 1.1920929e-7f) {
            open = true;
            quiet = 0;
            events.push_back({Kind::Open, i});
        }
        if (!open) continue;
        if (x >= threshold * 0.5f + 1.1920929e-7f) {
            quiet = 0;
        } else if (++quiet > quietLimit) {
            open = false;
            quiet = 0;
            events.push_back({Kind::Close, i});
        }
    }
    return events;
}

Events play(wave::Environment& environment, Trigger& trigger, const std::vector<int>& pieces) {
    Events events;
    events.reserve(4096);
    int start = 0;
    const RealtimeGuard guard;
    for (const int n : pieces) {
        environment.beginBlock();
        for (const Trigger::Event& event : trigger.analyse(n))
            events.push_back({event.kind, start + event.sample});
        environment.render(n, 0);
        start += n;
    }
    return events;
}

/// Bursts and pauses of all lengths, with levels that cross both limits.
std::vector<float> levelsOf(Rng& rng, int length) {
    std::vector<float> levels;
    while (static_cast<int>(levels.size()) < length) {
        const double top = rng.integer(0, 2) == 0 ? 0.2 : 1.0;
        const int burst = rng.integer(1, 400);
        for (int i = 0; i < burst; ++i)
            levels.push_back(static_cast<float>(rng.real(0.0, top)));
    }
    levels.resize(static_cast<std::size_t>(length));
    return levels;
}

}  // namespace

TEST_CASE("Trigger: opens and closes by the rules, for any cut, limit and rate") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 20000;
    for (const float ms : {0.0f, 0.5f, 3.0f, 15.0f})
        for (const float rate : {8000.0f, 48000.0f, 192000.0f})
            for (const float threshold : {0.0f, 0.1f, 0.5f, 0.95f}) {
                INFO(ms << " ms, rate " << rate << ", threshold " << threshold);
                wave::Environment environment;
                environment.setSampleRate(rate);
                const std::vector<float> levels = levelsOf(rng, length);
                SignalSource signal(&environment, levels);
                Trigger trigger(&environment, &signal);
                trigger.releaseMs = ms;
                trigger.threshold.assign(threshold);
                const int limit = std::max(
                    1, static_cast<int>(
                           static_cast<double>(rate) * 0.001 * static_cast<double>(ms) + 1e-6));
                CHECK(play(environment, trigger, rng.pieces(length, 256)) ==
                      expectedEvents(levels, threshold, limit));
            }
}

TEST_CASE("Trigger: one analysis a block, none while it is off, and none remembered") {
    wave::Environment environment;
    SignalSource loud(&environment, 1.0f);
    Trigger trigger(&environment, &loud);
    CHECK(play(environment, trigger, {4}) == Events{{Kind::Open, 0}});
    environment.beginBlock();
    CHECK(trigger.analyse(16).empty());
    CHECK(&trigger.analyse(16) == &trigger.analyse(16));
    CHECK(loud.renders == 2);
    trigger.enabled = false;
    CHECK(play(environment, trigger, {8, 8}).empty());
    CHECK(loud.renders == 2);
    trigger.enabled = true;
    CHECK(play(environment, trigger, {8, 8}) == Events{{Kind::Open, 0}});
}

TEST_CASE("Trigger: what is no number is quiet, and a lowered limit closes once") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    wave::Environment environment;
    std::vector<float> levels(4000, nan);
    levels[1] = std::numeric_limits<float>::infinity();
    SignalSource signal(&environment, std::move(levels));
    Trigger trigger(&environment, &signal);
    trigger.releaseMs = 1e30f;
    CHECK(play(environment, trigger, evenPieces(1000, 250)) == Events{{Kind::Open, 1}});
    trigger.releaseMs = -1.0f;
    CHECK(play(environment, trigger, evenPieces(1000, 250)) == Events{{Kind::Close, 0}});
}
