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
        struct Row {
            float bad, good;
        };
        const Row rows[] = {{nan, 0.0f},
                            {infinity, 0.0f},
                            {-infinity, 0.0f},
                            {3e38f, simd::loudestSample},
                            {-1e6f, -simd::loudestSample}};
        const Row& row = rows[k % 5];
        dirty[channel][i] = row.bad;
        clean[channel][i] = row.good;
    }
    for (const int latency : {0, 8}) {
        INFO("latency " << latency << ", seed " << rng.seed());
        TestProcessor fedClean(stereoLayout, 0, latency), fedDirty(stereoLayout, 0, latency);
        CHECK(throughAllPaths(fedDirty, dirty, {}) == throughAllPaths(fedClean, clean, {}));
    }
}

/// What the outputs give for inputs that each hold one number throughout.
std::vector<float> firstSamples(TestProcessor& processor, std::vector<const float*> inputs,
                                int numInputs, int numOutputs) {
    Buffers out(static_cast<std::size_t>(numOutputs), std::vector<float>(64));
    std::vector<float*> outputs;
    for (auto& channel : out)
        outputs.push_back(channel.data());
    processGuarded(processor, inputs.data(), numInputs, outputs.data(), numOutputs, 64);
    std::vector<float> firsts;
    for (const auto& channel : out) {
        CHECK(channel == std::vector<float>(64, channel[0]));
        firsts.push_back(channel[0]);
    }
    return firsts;
}

struct Constants {
    std::vector<float> one = std::vector<float>(64, 1.0f), two = std::vector<float>(64, 2.0f),
                       three = std::vector<float>(64, 3.0f), four = std::vector<float>(64, 4.0f);
};

using Firsts = std::vector<float>;

TEST_CASE("Inputs: mono feeds every channel; what is missing otherwise is silent") {
    const Constants in;
    TestProcessor processor;  // gain 2
    CHECK(firstSamples(processor, {in.one.data(), in.three.data()}, 2, 2) == Firsts{2.0f, 6.0f});
    CHECK(firstSamples(processor, {in.one.data()}, 1, 2) == Firsts{2.0f, 2.0f});
    CHECK(firstSamples(processor, {}, 0, 2) == Firsts{0.0f, 0.0f});
    CHECK(firstSamples(processor, {in.one.data()}, -3, 2) == Firsts{0.0f, 0.0f});
    CHECK(firstSamples(processor, {nullptr, in.one.data()}, 2, 2) == Firsts{0.0f, 2.0f});
    TestProcessor surround(2);  // three channels
    CHECK(firstSamples(surround, {in.one.data(), in.two.data()}, 2, 3) == Firsts{2.0f, 4.0f, 0.0f});
}

TEST_CASE("Inputs: a side chain is heard raw in any case, by detectors only when connected") {
    const Constants in;
    struct Row {
        bool feature, enabled, connected;
        std::vector<const float*> inputs;
        Firsts raw, detector;
    };
    const float *one = in.one.data(), *two = in.two.data(), *three = in.three.data(),
                *four = in.four.data();
    const Row rows[] = {
        {true, true, true, {one, two, three, four}, {3.0f, 4.0f}, {3.0f, 4.0f}},
        {true, true, false, {one, two, three, four}, {3.0f, 4.0f}, {0.0f, 0.0f}},
        {true, true, true, {one, two, three}, {3.0f, 3.0f}, {3.0f, 3.0f}},  // mono side chain
        {true, true, true, {one, two}, {1.0f, 2.0f}, {1.0f, 2.0f}},         // none given
        {true, true, true, {one, two, nullptr, nullptr}, {1.0f, 2.0f}, {1.0f, 2.0f}},
        {true, false, true, {one, two, three, four}, {1.0f, 2.0f}, {0.0f, 0.0f}},
        {false, true, true, {one, two, three, four}, {1.0f, 2.0f}, {0.0f, 0.0f}},
    };
    for (const Row& row : rows) {
        INFO("row " << &row - rows);
        constexpr std::uint32_t sideChainFeature = GenericPluginBase::hasSideChain;
        TestProcessor processor(stereoLayout, row.feature ? sideChainFeature : 0u);
        processor.sideChainEnabled = row.enabled;
        processor.setSideChainConnected(row.connected);
        const int numInputs = static_cast<int>(row.inputs.size());
        for (const auto& channel : processor.getChannels())
            channel->output = &channel->rawSideChainInput;
        CHECK(firstSamples(processor, row.inputs, numInputs, 2) == row.raw);
        for (const auto& channel : processor.getChannels())
            channel->output = &channel->sideChainInput;
        CHECK(firstSamples(processor, row.inputs, numInputs, 2) == row.detector);
        const bool isSilence = row.detector[0] == 0.0f;
        CHECK(processor.getChannels()[0]->sideChainInput.isConstant() == isSilence);
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

TEST_CASE("Inputs: an output that the product left out is silent") {
    const Constants in;
    TestProcessor processor;
    processor.getChannels()[1]->output = nullptr;
    CHECK(firstSamples(processor, {in.one.data(), in.two.data()}, 2, 2) == Firsts{2.0f, 0.0f});
}

}  // namespace
}  // namespace cinder::test
