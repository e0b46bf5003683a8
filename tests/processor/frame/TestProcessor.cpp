#include "processor/frame/TestProcessor.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "support/RealtimeGuard.h"
#include "support/Rng.h"

namespace cinder::test {

TestProcessor::TestProcessor(std::int32_t layout, std::uint32_t features, std::int32_t latency)
    : GenericPluginProcessor(layout, features) {
    gain.addTarget(&gainSource.parameter);
    invert.addProperty(&inverted);
    bypassParameter = &bypass;
    midiStateParameter = &receiveMidi;
    for (int i = 0; i < getChannelCount(); ++i) {
        Channel& channel = addChannel(std::make_unique<Channel>(this));
        gainStages.push_back(
            std::make_unique<GainStage>(environment.get(), &gainSource, &inverted));
        lateStages.push_back(std::make_unique<LateStage>(environment.get(), latency));
        gainStages.back()->setInput(&channel.input);
        lateStages.back()->setInput(gainStages.back().get());
        channel.output = lateStages.back().get();
    }
    setLatency(latency);
    applyParameters();
    numChanges = 0;
}

void processGuarded(GenericPluginProcessor& processor, const float* const* inputs, int numInputs,
                    float* const* outputs, int numOutputs, int numSamples) {
    const RealtimeReport report =
        guarded([&] { processor.process(inputs, numInputs, outputs, numOutputs, numSamples); });
    REQUIRE_MESSAGE(report.isClean(), report);
}

Buffers Host::render(const Buffers& inputs, const std::vector<int>& cuts, int numOutputs) {
    if (numOutputs < 0) numOutputs = static_cast<int>(inputs.size());
    const int numSamples = static_cast<int>(inputs.front().size());
    Buffers in = inputs;
    Buffers out(static_cast<std::size_t>(numOutputs), std::vector<float>(inputs.front().size()));
    std::vector<float*> inPointers(in.size()), outPointers(out.size());
    std::size_t nextCut = 0;
    for (int position = 0; position < numSamples;) {
        const int length = std::min(cuts[nextCut++ % cuts.size()], numSamples - position);
        for (std::size_t i = 0; i < in.size(); ++i)
            inPointers[i] = in[i].data() + position;
        for (std::size_t i = 0; i < out.size(); ++i)
            outPointers[i] = outputOverInput.empty()
                                 ? out[i].data() + position
                                 : inPointers[static_cast<std::size_t>(outputOverInput[i])];
        processGuarded(processor, inPointers.data(), static_cast<int>(in.size()),
                       outPointers.data(), numOutputs, length);
        for (std::size_t i = 0; i < out.size(); ++i)
            std::copy_n(outPointers[i], length, out[i].data() + position);
        position += length;
    }
    return out;
}

std::vector<std::vector<int>> hostCuts(std::uint64_t seed, int numSamples) {
    Rng rng(seed);
    return {{256}, {1}, {3}, {64}, {255}, {257}, {4096}, rng.pieces(numSamples, 700)};
}

}  // namespace cinder::test
