#include "wave/Delay.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/Rng.h"
#include "wave/Cycle.h"
#include "wave/DelayFilterBase.h"

namespace cinder::wave {
namespace {

using test::runCycle;

/// The delay told the slow way: everything that was ever written, behind silence without end.
struct Tape {
    void write(const float* source, int n) { samples.insert(samples.end(), source, source + n); }
    /// n samples that end `delay` samples before the last one written.
    std::vector<float> read(int delay, int n, float fill) const {
        std::vector<float> out;
        const auto end = static_cast<std::ptrdiff_t>(samples.size()) - delay;
        for (std::ptrdiff_t t = end - n; t < end; ++t)
            out.push_back(t >= 0 ? samples[static_cast<std::size_t>(t)] : fill);
        return out;
    }
    std::vector<float> samples;
};

TEST_CASE("Delay: the ring is the smallest power of two that holds the longest delay and a block") {
    Environment environment;
    for (int maxDelay : {-5, 0, 1, 255, 256, 257, 767, 768, 769, 100000}) {
        INFO("longest delay " << maxDelay);
        Delay constructed(&environment, maxDelay);
        Delay changed(&environment);
        changed.setMaxDelay(maxDelay);
        for (const Delay* delay : {&constructed, &changed}) {
            const int needed = std::max(maxDelay, 0) + 256;
            CHECK(delay->getSize() >= needed);
            CHECK(delay->getSize() < 2 * needed);
            CHECK((delay->getSize() & delay->getMask()) == 0);
            CHECK(delay->getMaxDelay() == std::max(maxDelay, 0));
        }
        changed.setMaxDelay(maxDelay / 2);
        CHECK(changed.getDelay() <= changed.getMaxDelay());
        CHECK(changed.getTapBase() == changed.getReadBase() - changed.getDelay() - 1);
        constructed.setDelay(1 << 30);
        CHECK(constructed.getDelay() == std::max(maxDelay, 0));
        CHECK(constructed.getTapBase() == constructed.getReadBase() - constructed.getDelay() - 1);
    }
}

TEST_CASE("Delay: reads what was written that long ago, for every delay and any cut") {
    test::Rng rng = test::Rng::fromEnvironment();
    Environment environment;
    for (int maxDelay : {0, 1, 100, 256, 300, 768}) {
        const std::vector<int> fullBlocks(12, 256);
        const bool isCut = maxDelay < 768;
        Delay delay(&environment, maxDelay);
        delay.setFillValue(-7.0f);
        Tape tape;
        const std::vector<float> signal = rng.noise(12 * 256);
        std::vector<float> out(256);
        int at = 0;
        for (int n : isCut ? rng.pieces(12 * 256, 256) : fullBlocks) {
            {
                const test::RealtimeGuard guard;
                delay.write(&signal[static_cast<std::size_t>(at)], n);
                delay.read(0, out.data(), n);
            }
            tape.write(&signal[static_cast<std::size_t>(at)], n);
            at += n;
            std::string wrongDelays;
            for (int d = 0; d <= maxDelay; ++d) {
                delay.read(d, out.data(), n);
                const std::vector<float> expected = tape.read(d, n, -7.0f);
                if (!std::equal(expected.begin(), expected.end(), out.begin()))
                    wrongDelays += std::to_string(d) + " ";
            }
            INFO("longest " << maxDelay << ", written " << at << ", block " << n << ", seed "
                            << rng.seed());
            CHECK(wrongDelays == "");
            CHECK(delay.getValidCount() <= delay.getSize());
        }
    }
}

TEST_CASE("Delay: forgets what was written when cleared or resized") {
    Environment environment;
    Delay delay(&environment, 50);
    std::vector<float> ones(256, 1.0f), out(256);
    const auto heard = [&] {
        delay.read(50, out.data(), 10);
        return std::count(out.begin(), out.begin() + 10, 1.0f);
    };
    for (int way : {0, 1, 2}) {
        for (int i = 0; i < 5; ++i)
            delay.write(ones.data(), 256);
        CHECK(heard() == 10);
        if (way == 0) delay.clear();
        if (way == 1) delay.setMaxDelay(5000);
        if (way == 2) delay.setMaxDelay(50);
        INFO("way " << way);
        CHECK(heard() == 0);
        delay.write(ones.data(), 55);
        CHECK(heard() == 5);
    }
    delay.setMaxDelay(50);
    CHECK(heard() == 5);
}

/// y[t] = x[t - delay], by way of DelayFilterBase.
struct PlainDelay final : DelayFilterBase {
    PlainDelay(Environment* environment, int samples, bool feedback)
        : DelayFilterBase(environment) {
        delay.setMaxDelay(samples);
        delay.setDelay(samples);
        setFeedbackMode(feedback);
    }
    void process(float* out, int numSamples) noexcept override {
        delay.read(delay.getDelay(), out, numSamples);
    }
};

/// x[t] + gain * y[t - delay].
struct FeedbackSum final : Filter {
    FeedbackSum(Environment* environment, Producer* loop, float gain)
        : Filter(environment), loop(loop), gain(gain) {}
    void process(BasicBlock<float>* in, BasicBlock<float>* out, int numSamples,
                 unsigned) noexcept override {
        const float* const back = loop->pull(numSamples)->data();
        for (int i = 0; i < numSamples; ++i)
            out->data()[i] = in->data()[i] + gain * back[i];
    }
    Producer* loop;
    float gain;
};

/// Positions from 1; what lies before `start` on the time line is silent.
float clockAt(std::int64_t position, std::int64_t start) {
    return position >= start ? static_cast<float>(position + 1) : 0.0f;
}

TEST_CASE("DelayFilterBase: delays by its samples in both modes, and forgets when time jumps") {
    enum class Jump { None, Skipped, NobodyPulls, HardReset };
    struct Case {
        Jump jump;
        bool forgets;
    };
    test::Rng rng = test::Rng::fromEnvironment();
    for (const Case& c : {Case{Jump::None, false}, Case{Jump::Skipped, true},
                          Case{Jump::NobodyPulls, true}, Case{Jump::HardReset, true}})
        for (bool feedback : {false, true})
            for (int delaySamples : {0, 1, 64, 200, 1000}) {
                // In feedback mode a block reads before it is written.
                const int longest = feedback ? std::min(delaySamples, 256) : 256;
                if (longest == 0) continue;
                INFO("jump " << static_cast<int>(c.jump) << ", feedback " << feedback << ", delay "
                             << delaySamples << ", seed " << rng.seed());
                Environment environment;
                test::ClockSource source(&environment);
                PlainDelay delay(&environment, delaySamples, feedback);
                delay.setInput(&source);
                std::int64_t start = 0;
                int wrong = 0;
                for (int cycle = 0; cycle < 60; ++cycle) {
                    const int n = rng.integer(1, longest);
                    if (cycle % 20 == 19) {
                        if (c.jump == Jump::Skipped)
                            runCycle(environment, n, {}, Environment::skipCycle);
                        if (c.jump == Jump::NobodyPulls) runCycle(environment, n);
                        if (c.jump == Jump::HardReset)
                            environment.reset(Environment::ResetMode::ActiveOnly);
                        if (c.forgets) start = static_cast<std::int64_t>(environment.getPosition());
                    }
                    const auto position = static_cast<std::int64_t>(environment.getPosition());
                    runCycle(environment, n, {&delay});
                    for (int i = 0; i < n; ++i)
                        wrong += delay.getOutput()->data()[i] !=
                                 clockAt(position + i - delaySamples, start);
                }
                CHECK(wrong == 0);
            }
}

TEST_CASE("DelayFilterBase: a loop rings like its difference equation, however the block is cut") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int delaySamples : {1, 7, 256, 700})
        for (bool sumIsPulled : {true, false}) {
            INFO("delay " << delaySamples << ", sum pulled " << sumIsPulled << ", seed "
                          << rng.seed());
            Environment environment;
            test::ClockSource source(&environment);
            PlainDelay delay(&environment, delaySamples, true);
            FeedbackSum sum(&environment, &delay, -0.5f);
            sum.setInput(&source);
            delay.setInput(&sum);
            std::vector<float> expected;
            int wrong = 0;
            for (int n : rng.pieces(3000, std::min(delaySamples, 256))) {
                const auto at = static_cast<std::size_t>(environment.getPosition());
                for (std::size_t t = at; t < at + static_cast<std::size_t>(n); ++t)
                    expected.push_back(
                        static_cast<float>(t + 1) -
                        0.5f * (t >= static_cast<std::size_t>(delaySamples)
                                    ? expected[t - static_cast<std::size_t>(delaySamples)]
                                    : 0.0f));
                // Whether the loop is entered at the sum or at the delay makes no difference.
                if (sumIsPulled)
                    runCycle(environment, n, {&sum});
                else
                    runCycle(environment, n, {&delay});
                for (int i = 0; i < n; ++i)
                    wrong +=
                        sum.getOutput()->data()[i] != expected[at + static_cast<std::size_t>(i)];
            }
            CHECK(wrong == 0);
            CHECK(source.visits.size() > 0);
        }
}

}  // namespace
}  // namespace cinder::wave
