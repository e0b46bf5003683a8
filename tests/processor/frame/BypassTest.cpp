#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

#include "processor/frame/TestProcessor.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

constexpr int fadeLength = 2205;  // 50 ms at 44.1 kHz
using Samples = std::vector<float>;

/// A mono run in one host block after the other, with the input at hand.
class Run {
public:
    explicit Run(int latency) : processor(monoLayout, 0, latency), latency(latency) {}

    Samples next(int numSamples, int cut) {
        const Samples block = rng.noise(numSamples);
        input.insert(input.end(), block.begin(), block.end());
        return Host(processor).render({block}, {cut})[0];
    }
    /// The delayed input that belongs to sample i of the last `numSamples`.
    float dry(int i, int numSamples) const {
        const int at = static_cast<int>(input.size()) - numSamples + i - latency;
        return at < 0 ? 0.0f : input[static_cast<std::size_t>(at)];
    }

    TestProcessor processor;

private:
    Rng rng{1};
    int latency;
    Samples input;
};

/// Index of the first sample from `start` that isn't `gain` times the delayed input; the length if
/// there is none.
int firstOther(const Run& run, const Samples& out, int start = 0, float gain = 1.0f) {
    const int n = static_cast<int>(out.size());
    int i = start;
    while (i < n && out[static_cast<std::size_t>(i)] == gain * run.dry(i, n))
        ++i;
    return i;
}

/// Checks a crossfade between twice the delayed input and itself, to the end of the signal.
void checkFade(const Run& run, const Samples& out, int start, float from, float to,
               int length = fadeLength) {
    const int n = static_cast<int>(out.size());
    float worst = 0.0f;
    for (int i = start; i < start + length; ++i) {
        const float t = static_cast<float>(i - start) / static_cast<float>(length);
        const float expected = run.dry(i, n) * (2.0f - (from + (to - from) * t));
        worst = std::max(worst, std::abs(out[static_cast<std::size_t>(i)] - expected));
    }
    CHECK(worst < 1e-4f);
    CHECK(firstOther(run, out, start + length, 2.0f - to) == n);
}

TEST_CASE("Bypass: the output is the input delayed by the latency, to the bit") {
    for (const int latency : {0, 1, 8, 255, 256})
        for (const int cut : {1, 64, 257, 4096}) {
            INFO("latency " << latency << ", cut " << cut);
            Run run(latency);
            run.processor.setBypass(true, 0);  // before the first block: at once
            CHECK(firstOther(run, run.next(5000, cut)) == 5000);
            CHECK(run.processor.cycles.sizes.empty());
            CHECK(run.processor.getEnvironment()->getPosition() == 5000);
        }
}

TEST_CASE("Bypass: engaging fades to dry over 50 ms at once, at any rate") {
    for (const int latency : {0, 8})
        for (const int rate : {44100, 96000}) {
            INFO("latency " << latency << ", rate " << rate);
            Run run(latency);
            run.processor.getEnvironment()->setSampleRate(static_cast<float>(rate));
            run.next(1000, 256);
            run.processor.setBypass(true, 0);
            const int length = rate / 20;
            checkFade(run, run.next(6000, 256), 0, 0.0f, 1.0f, length);
            // The graph ran to the end of the sub-block in which the fade ended, and no longer.
            CHECK(run.processor.getEnvironment()->getPosition() == 7000);
            CHECK(run.processor.cycles.sizes.size() == 4u + (length + 255u) / 256u);
        }
}

TEST_CASE("Bypass: leaving fills the graph for the latency, then fades to wet over 50 ms") {
    for (const int latency : {0, 8, 100})
        for (const int cut : {1, 4, 64, 256}) {
            INFO("latency " << latency << ", cut " << cut);
            Run run(latency);
            run.processor.setBypass(true, 0);
            run.next(1024, 256);
            run.processor.setBypass(false, 0);
            CHECK(run.processor.getEnvironment()->getHardResetPosition() == 1024);
            const Samples out = run.next(4096, cut);
            const int start = (latency + cut - 1) / cut * cut;
            CHECK(firstOther(run, out) == start + 1);  // a ramp starts with its start value
            checkFade(run, out, start, 1.0f, 0.0f);
        }
}

TEST_CASE("Bypass: requests combine by OR, and turning back leaves no step") {
    Run run(8);
    run.next(512, 256);
    run.processor.setBypass(true, 0);
    run.processor.bypass.setValue(1.0f, 0);
    run.next(4096, 256);
    run.processor.setBypass(false, 0);
    CHECK(firstOther(run, run.next(2048, 256)) == 2048);

    // Left and engaged again while the graph is being filled: nothing is heard of it.
    run.processor.bypass.setValue(0.0f, 0);
    CHECK(firstOther(run, run.next(4, 4)) == 4);
    run.processor.bypass.setValue(1.0f, 0);
    CHECK(firstOther(run, run.next(4096, 256)) == 4096);

    // Engaged again half way to wet: the fade turns round where it is.
    run.processor.bypass.setValue(0.0f, 0);
    run.next(256 + 1100, 256);
    run.processor.bypass.setValue(1.0f, 0);
    const float turn = 1.0f - 1100.0f / static_cast<float>(fadeLength);
    checkFade(run, run.next(4096, 256), 0, turn, 1.0f);

    // Turning round before the graph was ever skipped doesn't clear it, and neither does a reset
    // of the controls end the fade.
    Run again(0);
    again.next(512, 256);
    again.processor.setBypass(true, 0);
    again.next(1024, 256);
    const auto hardReset = again.processor.getEnvironment()->getHardResetPosition();
    again.processor.setBypass(false, 0);
    again.processor.requestDiscontinuity();
    checkFade(again, again.next(4096, 256), 0, 1024.0f / static_cast<float>(fadeLength), 0.0f);
    CHECK(again.processor.getEnvironment()->getHardResetPosition() == hardReset);
}

TEST_CASE("Bypass: a reset ends the fade and empties the delay") {
    Run run(8);
    run.next(512, 256);
    run.processor.setBypass(true, 0);
    run.next(256, 256);
    run.processor.reset();
    const Samples out = run.next(512, 256);
    CHECK(std::count(out.begin(), out.begin() + 8, 0.0f) == 8);
    CHECK(firstOther(run, out, 8) == 512);

    run.processor.setBypass(false, 0);  // while leaving is pending: wet at once
    run.processor.reset();
    CHECK(firstOther(run, run.next(512, 256), 8, 2.0f) == 512);
}

TEST_CASE("Bypass: a new latency starts with an empty delay, allocated for only when very long") {
    Run run(0);
    run.processor.setBypass(true, 0);
    for (const int latency : {8, 4, 256, 0, 200, 5000}) {
        INFO("latency " << latency);
        run.processor.setLatency(latency);
        // Beyond what is held ready, the next block allocates: it takes in one sample of silence.
        if (latency == 5000) run.processor.process(nullptr, 0, nullptr, 0, 1);
        const Samples out = run.next(8000, 300);  // guarded
        CHECK(run.processor.getBypassProcessor().getLatencyApplied() == latency);
        for (int i = 0; i < 8000; ++i)
            REQUIRE(out[static_cast<std::size_t>(i)] ==
                    (i < latency ? 0.0f : run.dry(i - latency, 8000)));
    }
}

TEST_CASE("Bypass: switched by a controller in the middle of a block, the graph stays in time") {
    for (const int latency : {0, 8}) {
        INFO("latency " << latency);
        Run run(latency);
        run.processor.getControllerMapping().set(9, run.processor.bypass.getId());
        run.processor.enqueueMidiEvent({0xb0, 9, 127}, 100);
        run.processor.enqueueMidiEvent({0xb0, 9, 0}, 5000);  // fully bypassed since 2305
        const Samples out = run.next(16384, 16384);
        CHECK(firstOther(run, out, 2400) > 5000);
        CHECK(firstOther(run, out, 5000 + 256 + fadeLength, 2.0f) == 16384);
    }
}

}  // namespace
}  // namespace cinder::test
