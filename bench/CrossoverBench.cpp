// What the band split costs, in every instruction set this processor has: 1 to 6 bands of 24 dB an
// octave, in mono, in stereo with a split for each channel, and in stereo as two lanes; and six
// bands with all crossovers in motion, or while they fade over from five. A block is what the graph
// cuts: 256 samples of each channel, and ns/sample is per sample of a channel.
#include <cmath>
#include <string>

#include "core/platform/Denormals.h"
#include "core/simd/InstructionSet.h"
#include "dsp/filters/crossover/MultiBand.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

/// One block, over and over.
class Loop final : public wave::Source {
public:
    /// `at(i)` is sample number i.
    template <class At>
    Loop(wave::Environment* environment, At at) : Source(environment) {
        for (int i = 0; i < blockSize; ++i)
            (*ownBlock)[i] = at(static_cast<float>(i));
    }
    void render(wave::BasicBlock<float>*, int, unsigned) noexcept CINDER_REALTIME override {}
};

enum class Channels { Mono, Unlinked, Linked };
enum class Motion { Standing, Moving, Fading };

void runSplit(benchmark::State& state, Channels channels, int numBands, Motion motion) {
    wave::Environment environment;
    CrossoverMultiBandModel model;
    for (int i = 0; i < CrossoverMultiBandModel::maxCrossovers; ++i)
        model.getCrossover(i).frequency = 7.0f + 1.5f * static_cast<float>(i);
    Loop input(&environment, [](float i) { return 0.5f * std::sin(0.05f * i); });
    Loop control(&environment, [](float i) { return 9.0f + 0.001f * std::abs(i - 128.0f); });
    MultiBand splits[] = {{&environment, &model}, {&environment, &model}};
    for (MultiBand& split : splits) {
        split.setInput(&input);
        for (int i = 0; i < MultiBand::maxCrossovers && motion == Motion::Moving; ++i)
            split.getCrossover(i).frequency.setSource(&control);
    }
    model.bandCount.assign(numBands);
    if (channels == Channels::Linked) splits[0].link(splits[1]);
    const int numChannels = channels == Channels::Mono ? 1 : 2;
    const platform::FlushDenormalsScope flush;
    bench::measureBlocks(state, blockSize * numChannels, [&] {
        if (motion == Motion::Fading && !splits[0].isFading())
            model.bandCount.assign(model.bandCount == numBands ? numBands - 1 : numBands);
        environment.beginBlock();
        for (int c = 0; c < numChannels; ++c)
            for (int band = 0; band < MultiBand::maxBands; ++band)
                benchmark::DoNotOptimize(splits[c].getOutput(band)->pull(blockSize)->data());
        environment.render(blockSize, 0);
    });
}

constexpr struct {
    const char* name;
    Channels channels;
} layouts[] = {
    {"mono", Channels::Mono}, {"stereo", Channels::Unlinked}, {"stereo, linked", Channels::Linked}};

void add(simd::InstructionSet set, const std::string& what, int numBands, Motion motion) {
    for (const auto& layout : layouts)
        benchmark::RegisterBenchmark((what + "/" + layout.name + "/" + simd::nameOf(set)).c_str(),
                                     [=](benchmark::State& state) {
                                         simd::ScopedInstructionSet scope(set);
                                         runSplit(state, layout.channels, numBands, motion);
                                     })
            ->UseManualTime();
}

}  // namespace

int main(int argc, char** argv) {
    for (const simd::InstructionSet set : simd::supportedSets()) {
        for (int bands = 1; bands <= 6; ++bands)
            add(set, "bands:" + std::to_string(bands), bands, Motion::Standing);
        add(set, "bands:6, moving", 6, Motion::Moving);
        add(set, "bands:5 to 6, fading", 6, Motion::Fading);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
