// What the frame costs: a processor whose output is its input, plain, with a latency that keeps the
// dry delays busy, and bypassed; a control value at rest, ramping, and a ramp that is restarted in
// every block. A host block has 256 samples, one sub-block.
#include <memory>
#include <vector>

#include "processor/frame/Channel.h"
#include "support/BlockBenchmark.h"
#include "wave/FloatParameterSource.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

class EmptyProcessor final : public GenericPluginProcessor {
public:
    EmptyProcessor(std::int32_t layout, int latency) : GenericPluginProcessor(layout) {
        for (int i = 0; i < getChannelCount(); ++i) {
            Channel& channel = addChannel(std::make_unique<Channel>(this));
            channel.output = &channel.input;
        }
        setLatency(latency);
    }

private:
    Initialized initialized{this};
};

/// Per sample of one channel, so that stereo and mono compare.
void emptyGraph(benchmark::State& state, std::int32_t layout, int latency, bool isBypassed) {
    EmptyProcessor processor(layout, latency);
    processor.setBypass(isBypassed, GenericPluginProcessor::hostBypassIndex);
    const int numChannels = processor.getChannelCount();
    std::vector<std::vector<float>> in, out;
    std::vector<const float*> inputs;
    std::vector<float*> outputs;
    for (int i = 0; i < numChannels; ++i) {
        in.emplace_back(blockSize, 0.25f);
        out.emplace_back(blockSize);
    }
    for (int i = 0; i < numChannels; ++i) {
        inputs.push_back(in[static_cast<std::size_t>(i)].data());
        outputs.push_back(out[static_cast<std::size_t>(i)].data());
    }
    bench::measureBlocks(state, blockSize * numChannels, [&] {
        processor.process(inputs.data(), numChannels, outputs.data(), numChannels, blockSize);
    });
}

enum class Control { AtRest, Ramping, Restarted };

void control(benchmark::State& state, Control kind) {
    wave::Environment environment;
    wave::FloatParameterSource source(&environment, 0.5f);
    float target = 0.25f;
    const auto cycle = [&] {
        environment.beginBlock();
        if (kind == Control::Restarted || (kind == Control::Ramping && source.isConstant())) {
            // A long ramp, so that nearly all blocks of it are in the middle.
            source.parameter.setValue(target, 1000.0f);
            target = 0.75f - target;
        }
        benchmark::DoNotOptimize(source.pull(blockSize)->data());
        environment.render(blockSize, 0);
    };
    cycle();
    bench::measureBlocks(state, blockSize, cycle);
}

void registerEmptyGraph(const char* name, std::int32_t layout, int latency, bool isBypassed) {
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
        emptyGraph(state, layout, latency, isBypassed);
    })->UseManualTime();
}

void registerControl(const char* name, Control kind) {
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
        control(state, kind);
    })->UseManualTime();
}

}  // namespace

int main(int argc, char** argv) {
    registerEmptyGraph("empty/mono", monoLayout, 0, false);
    registerEmptyGraph("empty/stereo", stereoLayout, 0, false);
    registerEmptyGraph("empty/stereo/latency", stereoLayout, 8, false);
    registerEmptyGraph("empty/stereo/bypassed", stereoLayout, 8, true);
    registerControl("control/at rest", Control::AtRest);
    registerControl("control/ramping", Control::Ramping);
    registerControl("control/restarted", Control::Restarted);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
