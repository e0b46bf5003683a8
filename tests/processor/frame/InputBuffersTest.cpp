#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/simd/Sanitise.h"
#include "processor/frame/TestProcessor.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

/// A signal through processing, into bypass and out of it again.
Buffers throughAllPaths(TestProcessor& processor, const Buffers& in, const std::vector<int>& over) {
    Host host(processor);
    host.outputOverInput = over;
    Buffers all(in.size());
    const auto stretch = [&](int from, int to) {
        Buffers part;
        for (const auto& channel : in)
            part.emplace_back(channel.begin() + from, channel.begin() + to);
        const Buffers out = host.render(part, {1000, 37});
        for (std::size_t c = 0; c < all.size(); ++c)
            all[c].insert(all[c].end(), out[c].begin(), out[c].end());
    };
    stretch(0, 3000);
    processor.setBypass(true, 0);
    stretch(3000, 8000);
    processor.setBypass(false, 0);
    stretch(8000, 12000);
    return all;
}

TEST_CASE("Inputs: an output buffer may be the input buffer of any channel") {
    Rng rng = Rng::fromEnvironment();
    for (const int latency : {0, 8})
        for (const int maxSubBlock : {256, 100}) {
            const Buffers in = {rng.noise(12000), rng.noise(12000)};
            TestProcessor separate(stereoLayout, 0, latency);
            separate.maxSubBlock = maxSubBlock;
            const Buffers expected = throughAllPaths(separate, in, {});
            for (const std::vector<int>& over : {std::vector<int>{0, 1}, std::vector<int>{1, 0}}) {
                INFO("latency " << latency << ", swapped " << over[0] << ", seed " << rng.seed());
                TestProcessor processor(stereoLayout, 0, latency);
                processor.maxSubBlock = maxSubBlock;
                CHECK(throughAllPaths(processor, in, over) == expected);
            }
        }
}

TEST_CASE("Inputs: what isn't finite is silence, in processing, in bypass and between") {
    Rng rng = Rng::fromEnvironment();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Buffers clean = {rng.noise(12000), rng.noise(12000)};
    Buffers dirty = clean;
    for (int k = 0; k < 600; ++k) {
        const auto channel = static_cast<std::size_t>(rng.integer(0, 1));
        const auto i = static_cast<std::size_t>(rng.integer(0, 11999));
        const float bad[] = {nan, infinity, -infinity, 3e38f, -1e6f};
        dirty[channel][i] = bad[k % 5];
        clean[channel][i] = k % 5 < 3    ? 0.0f
                            : k % 5 == 3 ? simd::loudestSample
                                         : -simd::loudestSample;
    }
    for (const int latency : {0, 8}) {
        INFO("latency " << latency << ", seed " << rng.seed());
        TestProcessor fedClean(stereoLayout, 0, latency), fedDirty(stereoLayout, 0, latency);
        CHECK(throughAllPaths(fedDirty, dirty, {}) == throughAllPaths(fedClean, clean, {}));
    }
}

using Levels = std::vector<float>;
constexpr float missing = -1.0f;  // a null pointer

/// What the outputs give for inputs that each hold one level throughout.
Levels outputLevels(TestProcessor& processor, const Levels& inputs, int numOutputs,
                    bool hasInputs = true) {
    constexpr std::size_t n = 64;
    Buffers in, out(static_cast<std::size_t>(numOutputs), std::vector<float>(n));
    for (const float level : inputs)
        in.emplace_back(n, level);
    std::vector<const float*> inPointers;
    std::vector<float*> outPointers;
    for (const auto& channel : in)
        inPointers.push_back(channel[0] == missing ? nullptr : channel.data());
    for (auto& channel : out)
        outPointers.push_back(channel.data());
    processGuarded(processor, inPointers.data(), hasInputs ? static_cast<int>(in.size()) : -3,
                   outPointers.data(), numOutputs, n);
    Levels levels;
    for (const auto& channel : out) {
        CHECK(channel == std::vector<float>(n, channel[0]));
        levels.push_back(channel[0]);
    }
    return levels;
}

TEST_CASE("Inputs: mono feeds every channel; what is missing otherwise is silent") {
    TestProcessor processor;  // gain 2
    CHECK(outputLevels(processor, {1, 3}, 2) == Levels{2, 6});
    CHECK(outputLevels(processor, {1}, 2) == Levels{2, 2});
    CHECK(outputLevels(processor, {}, 2) == Levels{0, 0});
    CHECK(outputLevels(processor, {1}, 2, false) == Levels{0, 0});
    CHECK(outputLevels(processor, {missing, 1}, 2) == Levels{0, 2});
    TestProcessor surround(2);  // three channels
    CHECK(outputLevels(surround, {1, 2}, 3) == Levels{2, 4, 0});
    processor.getChannels()[1]->output = nullptr;  // the product left it out
    CHECK(outputLevels(processor, {1, 2}, 2) == Levels{2, 0});
}

TEST_CASE("Inputs: a side chain is heard raw in any case, by detectors only when connected") {
    const struct {
        bool feature, enabled, connected;
        Levels inputs, raw, detector;
    } rows[] = {
        {true, true, true, {1, 2, 3, 4}, {3, 4}, {3, 4}},
        {true, true, false, {1, 2, 3, 4}, {3, 4}, {0, 0}},
        {true, true, true, {1, 2, 3}, {3, 3}, {3, 3}},  // mono side chain
        {true, true, true, {1, 2}, {1, 2}, {1, 2}},     // none given
        {true, true, true, {1, 2, missing, missing}, {1, 2}, {1, 2}},
        {true, false, true, {1, 2, 3, 4}, {1, 2}, {0, 0}},
        {false, true, true, {1, 2, 3, 4}, {1, 2}, {0, 0}},
    };
    for (const auto& row : rows) {
        INFO("row " << &row - rows);
        const std::uint32_t features = GenericPluginBase::hasSideChain;
        TestProcessor processor(stereoLayout, row.feature ? features : 0u);
        processor.sideChainEnabled = row.enabled;
        processor.setSideChainConnected(row.connected);
        for (const auto& channel : processor.getChannels())
            channel->output = &channel->rawSideChainInput;
        CHECK(outputLevels(processor, row.inputs, 2) == row.raw);
        for (const auto& channel : processor.getChannels())
            channel->output = &channel->sideChainInput;
        CHECK(outputLevels(processor, row.inputs, 2) == row.detector);
        CHECK(processor.getChannels()[0]->sideChainInput.isConstant() == (row.detector[0] == 0.0f));
    }
}

TEST_CASE("Inputs: one that a router passes by for a while is in time when it is heard again") {
    /// Plays the main input and the raw side chain in turns.
    struct Turns final : wave::Source {
        Turns(wave::Environment* environment, GenericPluginProcessor::Channel* channel)
            : wave::Source(environment), channel(channel) {}
        void render(wave::BasicBlock<float>*, int numSamples, unsigned) noexcept override {
            const bool isMain = ++turn % 3 == 0;
            passOn((isMain ? channel->input : channel->rawSideChainInput).pull(numSamples));
        }
        GenericPluginProcessor::Channel* channel;
        int turn = 0;
    };
    Rng rng = Rng::fromEnvironment();
    TestProcessor processor(monoLayout);
    processor.maxSubBlock = 50;
    Turns turns(processor.getEnvironment(), processor.getChannels()[0].get());
    processor.getChannels()[0]->output = &turns;
    const Buffers in = {rng.noise(4000)};
    INFO("seed " << rng.seed());
    CHECK(Host(processor).render(in, {1000, 333}) == in);
}

}  // namespace
}  // namespace cinder::test
