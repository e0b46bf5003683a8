#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

#include "processor/frame/TestProcessor.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

constexpr int fadeLength = 2205;  // 50 ms at 44.1 kHz

/// A mono run in one host block after the other, with the input at hand.
class Run {
public:
    explicit Run(int latency, std::uint64_t seed)
        : processor(monoLayout, 0, latency), rng(seed), latency(latency) {}

    std::vector<float> next(int numSamples, int cut) {
        const std::vector<float> block = rng.noise(numSamples);
        input.insert(input.end(), block.begin(), block.end());
        const Buffers out = Host(processor).render({block}, {cut});
        return out[0];
    }
    /// The delayed input that belongs to sample i of the last `numSamples`.
    float dry(int i, int numSamples) const {
        const int at = static_cast<int>(input.size()) - numSamples + i - latency;
        return at < 0 ? 0.0f : input[static_cast<std::size_t>(at)];
    }

    TestProcessor processor;

private:
    Rng rng;
    int latency;
    std::vector<float> input;
};

/// Index of the first sample that isn't the delayed input; the length if there is none.
int firstNotDry(const Run& run, const std::vector<float>& out) {
    const int n = static_cast<int>(out.size());
    int i = 0;
    while (i < n && out[static_cast<std::size_t>(i)] == run.dry(i, n))
        ++i;
    return i;
}

/// Checks a crossfade between the delayed input and twice of it.
void checkFade(const Run& run, const std::vector<float>& out, int start, float from, float to) {
    const int n = static_cast<int>(out.size());
    float worst = 0.0f;
    for (int i = start; i < std::min(n, start + fadeLength); ++i) {
        const float t = static_cast<float>(i - start) / static_cast<float>(fadeLength);
        const float fade = from + (to - from) * t;
        const float dry = run.dry(i, n);
        const float expected = (dry - 2.0f * dry) * fade + 2.0f * dry;
        worst = std::max(worst, std::abs(out[static_cast<std::size_t>(i)] - expected));
    }
    CHECK(worst < 1e-4f);
}

TEST_CASE("Bypass: the output is the input delayed by the latency, to the bit") {
    for (const int latency : {0, 1, 8, 255, 256})
        for (const int cut : {1, 64, 257, 4096}) {
            INFO("latency " << latency << ", cut " << cut);
            Run run(latency, 1);
            run.processor.setBypass(true, 0);  // before the first block: at once
            const std::vector<float> out = run.next(5000, cut);
            CHECK(firstNotDry(run, out) == 5000);
            CHECK(run.processor.cycles.sizes.empty());
            CHECK(run.processor.getEnvironment()->getPosition() == 5000);
        }
}

TEST_CASE("Bypass: engaging fades to dry over 50 ms at once") {
    for (const int latency : {0, 8}) {
        INFO("latency " << latency);
        Run run(latency, 2);
        run.next(1000, 256);
        run.processor.setBypass(true, 0);
        const std::vector<float> out = run.next(4000, 256);
        checkFade(run, out, 0, 0.0f, 1.0f);
        for (int i = fadeLength; i < 4000; ++i)
            REQUIRE(out[static_cast<std::size_t>(i)] == run.dry(i, 4000));
        // The graph ran to the end of the sub-block in which the fade ended, and no longer.
        CHECK(run.processor.getEnvironment()->getPosition() == 5000);
        CHECK(run.processor.cycles.sizes.size() == 4 + 9);
    }
}

TEST_CASE("Bypass: leaving fills the graph for the latency, then fades to wet over 50 ms") {
    for (const int latency : {0, 8, 100})
        for (const int cut : {1, 4, 64, 256}) {
            INFO("latency " << latency << ", cut " << cut);
            Run run(latency, 3);
            run.processor.setBypass(true, 0);
            run.next(1024, 256);
            run.processor.setBypass(false, 0);
            CHECK(run.processor.getEnvironment()->getHardResetPosition() == 1024);
            const std::vector<float> out = run.next(4096, cut);
            const int start = (latency + cut - 1) / cut * cut;
            CHECK(firstNotDry(run, out) == start + 1);  // a ramp starts with its start value
            checkFade(run, out, start, 1.0f, 0.0f);
            for (int i = start + fadeLength; i < 4096; ++i)
                REQUIRE(out[static_cast<std::size_t>(i)] == 2.0f * run.dry(i, 4096));
        }
}

TEST_CASE("Bypass: the fade takes 50 ms at any rate") {
    Run run(0, 9);
    run.processor.getEnvironment()->setSampleRate(96000.0f);
    run.next(256, 256);
    run.processor.setBypass(true, 0);
    const std::vector<float> out = run.next(5000, 256);
    CHECK(out[4799] != run.dry(4799, 5000));
    for (int i = 4800; i < 5000; ++i)
        REQUIRE(out[static_cast<std::size_t>(i)] == run.dry(i, 5000));
}

TEST_CASE("Bypass: requests combine by OR, and turning back leaves no step") {
    Run run(8, 4);
    run.next(512, 256);
    run.processor.setBypass(true, 0);
    run.processor.bypass.setValue(1.0f, 0);
    run.next(4096, 256);
    run.processor.setBypass(false, 0);
    CHECK(firstNotDry(run, run.next(2048, 256)) == 2048);

    // Left and engaged again while the graph is being filled: nothing is heard of it.
    run.processor.bypass.setValue(0.0f, 0);
    CHECK(firstNotDry(run, run.next(4, 4)) == 4);
    run.processor.bypass.setValue(1.0f, 0);
    CHECK(firstNotDry(run, run.next(4096, 256)) == 4096);

    // Engaged again half way to wet: the fade turns round where it is.
    run.processor.bypass.setValue(0.0f, 0);
    run.next(256 + 1100, 256);
    run.processor.bypass.setValue(1.0f, 0);
    const float turn = 1.0f - 1100.0f / static_cast<float>(fadeLength);
    const std::vector<float> out = run.next(4096, 256);
    checkFade(run, out, 0, turn, 1.0f);
    for (int i = fadeLength; i < 4096; ++i)
        REQUIRE(out[static_cast<std::size_t>(i)] == run.dry(i, 4096));
}

TEST_CASE("Bypass: a fade outlives what the graph goes through meanwhile") {
    Run run(0, 5);
    run.next(512, 256);
    run.processor.setBypass(true, 0);
    run.next(1024, 256);
    // Turning round before the graph was ever skipped doesn't clear it.
    const auto hardReset = run.processor.getEnvironment()->getHardResetPosition();
    run.processor.setBypass(false, 0);
    run.processor.requestDiscontinuity();
    const std::vector<float> out = run.next(4096, 256);
    checkFade(run, out, 0, 1024.0f / static_cast<float>(fadeLength), 0.0f);
    CHECK(run.processor.getEnvironment()->getHardResetPosition() == hardReset);
}

TEST_CASE("Bypass: a reset ends the fade and empties the delay") {
    Run run(8, 6);
    run.next(512, 256);
    run.processor.setBypass(true, 0);
    run.next(256, 256);
    run.processor.reset();
    std::vector<float> out = run.next(512, 256);
    for (int i = 0; i < 512; ++i)
        REQUIRE(out[static_cast<std::size_t>(i)] == (i < 8 ? 0.0f : run.dry(i, 512)));

    // While leaving is pending: wet at once.
    run.processor.setBypass(false, 0);
    run.processor.reset();
    out = run.next(512, 256);
    for (int i = 8; i < 512; ++i)
        REQUIRE(out[static_cast<std::size_t>(i)] == 2.0f * run.dry(i, 512));
}

TEST_CASE("Bypass: a new latency starts with an empty delay, allocated for only when very long") {
    Run run(0, 7);
    run.processor.setBypass(true, 0);
    for (const int latency : {8, 4, 256, 0, 200}) {
        INFO("latency " << latency);
        run.processor.setLatency(latency);
        const std::vector<float> out = run.next(1000, 300);  // guarded
        CHECK(run.processor.getBypassProcessor().getLatencyApplied() == latency);
        for (int i = 0; i < 1000; ++i)
            REQUIRE(out[static_cast<std::size_t>(i)] ==
                    (i < latency ? 0.0f : run.dry(i - latency, 1000)));
    }
    run.processor.setLatency(5000);
    run.processor.process(nullptr, 0, nullptr, 0, 1);  // takes in one sample of silence
    const std::vector<float> out = run.next(8000, 300);
    for (int i = 0; i < 8000; ++i)
        REQUIRE(out[static_cast<std::size_t>(i)] == (i < 5000 ? 0.0f : run.dry(i - 5000, 8000)));
}

TEST_CASE("Bypass: switched by a controller in the middle of a block, the graph stays in time") {
    for (const int latency : {0, 8}) {
        INFO("latency " << latency);
        Run run(latency, 8);
        run.processor.getControllerMapping().set(9, run.processor.bypass.getId());
        run.processor.enqueueMidiEvent({0xb0, 9, 127}, 100);
        run.processor.enqueueMidiEvent({0xb0, 9, 0}, 5000);  // fully bypassed since 2305
        const std::vector<float> out = run.next(16384, 16384);
        for (int i = 2400; i <= 5000; ++i)
            REQUIRE(out[static_cast<std::size_t>(i)] == run.dry(i, 16384));
        for (int i = 5000 + 256 + fadeLength; i < 16384; ++i)
            REQUIRE(out[static_cast<std::size_t>(i)] == 2.0f * run.dry(i, 16384));
    }
}

}  // namespace
}  // namespace cinder::test
