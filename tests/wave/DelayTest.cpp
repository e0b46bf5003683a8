#include "wave/Delay.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
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
    Delay changed(&environment);
    for (int maxDelay : {-5, 0, 256, 257, 768, 769, 100000, 50}) {
        INFO("longest delay " << maxDelay);
        const Delay constructed(&environment, maxDelay);
        changed.setMaxDelay(maxDelay);
        for (const Delay* delay : {&constructed, static_cast<const Delay*>(&changed)}) {
            const int needed = std::max(maxDelay, 0) + 256;
            CHECK(delay->getSize() >= needed);
            CHECK(delay->getSize() < 2 * needed);
            CHECK((delay->getSize() & delay->getMask()) == 0);
        }
        if (maxDelay != 50) changed.setDelay(1 << 30);
        CHECK(changed.getDelay() == std::max(maxDelay, 0));
        CHECK(changed.getTapBase() == changed.getReadBase() - changed.getDelay() - 1);
    }
}

TEST_CASE("Delay: reads what was written that long ago, for every delay and cut, until cleared") {
    test::Rng rng = test::Rng::fromEnvironment();
    Environment environment;
    for (int maxDelay : {0, 1, 100, 300, 768}) {
        Delay delay(&environment, maxDelay);
        delay.setFillValue(-7.0f);
        Tape tape;
        const std::vector<float> signal = rng.noise(12 * 256);
        std::vector<float> out(256);
        int at = 0;
        const std::vector<int> fullBlocks(12, 256);
        for (int n : maxDelay < 768 ? rng.pieces(12 * 256, 256) : fullBlocks) {
            delay.setMaxDelay(maxDelay);  // no news, so it forgets nothing
            const int way = rng.integer(0, 15);
            if (way == 0) delay.clear();
            if (way == 1) {
                delay.setMaxDelay(5000);
                delay.setMaxDelay(maxDelay);
            }
            if (way <= 1) tape.samples.clear();
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
        }
    }
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

/// x[t] - 0.5 * y[t - delay], or x[t] alone if there is no loop.
struct FeedbackSum final : Filter {
    FeedbackSum(Environment* environment, Producer* loop) : Filter(environment), loop(loop) {}
    void process(BasicBlock<float>* in, BasicBlock<float>* out, int numSamples,
                 unsigned) noexcept override {
        const float* const back = loop ? loop->pull(numSamples)->data() : nullptr;
        for (int i = 0; i < numSamples; ++i)
            out->data()[i] = in->data()[i] - (back ? 0.5f * back[i] : 0.0f);
    }
    Producer* loop;
};

TEST_CASE("DelayFilterBase: delays in both modes, rings in a loop, and forgets when time jumps") {
    enum class Jump { None, Skipped, NobodyPulls, HardReset };
    test::Rng rng = test::Rng::fromEnvironment();
    for (Jump jump : {Jump::None, Jump::Skipped, Jump::NobodyPulls, Jump::HardReset})
        for (const char* mode : {"plain", "feedback", "loop"})
            for (std::size_t lag : {0u, 1u, 64u, 256u, 700u}) {
                const bool isLoop = mode[0] == 'l', feedback = mode[0] != 'p';
                // A loop pulls its delay itself, and in feedback mode a block reads before it is
                // written.
                if (isLoop && jump == Jump::NobodyPulls) continue;
                const int longest = feedback ? std::min(static_cast<int>(lag), 256) : 256;
                if (longest == 0) continue;
                INFO("jump " << static_cast<int>(jump) << ", " << std::string(mode) << ", delay "
                             << lag << ", seed " << rng.seed());
                Environment environment;
                test::ClockSource source(&environment);
                PlainDelay delay(&environment, static_cast<int>(lag), feedback);
                FeedbackSum sum(&environment, isLoop ? &delay : nullptr);
                sum.setInput(&source);
                delay.setInput(&sum);
                std::vector<float> sums;  // since time has jumped
                int wrong = 0;
                for (int cycle = 0; cycle < 100; ++cycle) {
                    const int n = rng.integer(1, longest);
                    if (cycle % 20 == 19 && jump != Jump::None) {
                        if (jump == Jump::Skipped)
                            runCycle(environment, n, {}, Environment::skipCycle);
                        if (jump == Jump::NobodyPulls) runCycle(environment, n);
                        if (jump == Jump::HardReset)
                            environment.reset(Environment::ResetMode::ActiveOnly);
                        sums.clear();
                    }
                    // Whether a loop is entered at the sum or at the delay makes no difference.
                    const bool entersAtSum = isLoop && rng.integer(0, 1) == 1;
                    runCycle(environment, n, {entersAtSum ? static_cast<Producer*>(&sum) : &delay});
                    for (int i = 0; i < n; ++i) {
                        sums.push_back(source.getOutput()->data()[i]);
                        const std::size_t t = sums.size() - 1;
                        const float delayed = t >= lag ? sums[t - lag] : 0.0f;
                        if (isLoop) sums.back() -= 0.5f * delayed;
                        wrong += delay.getOutput()->data()[i] != delayed;
                        wrong += sum.getOutput()->data()[i] != sums.back();
                    }
                }
                CHECK(wrong == 0);
            }
}

}  // namespace
}  // namespace cinder::wave
