// What the way up and down costs per sample at the base rate of one channel: each factor at 44.1
// kHz by the scalar twin, and by the kernels of every instruction set for one, two, four and eight
// channels at once.
#include <memory>
#include <string>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "dsp/sr/IIRDecimator.h"
#include "dsp/sr/IIRInterpolator.h"
#include "dsp/sr/ScalarConverters.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;
constexpr int maxFactor = 8;

struct StyleRig {
    explicit StyleRig(int factor) {
        environment.setSampleRate(44100.0f);
        style.setFactor(factor);
    }
    wave::Environment environment;
    sr::IIRConverterStyle style{&environment};
};

std::vector<float> noise(int length) {
    std::vector<float> samples;
    for (unsigned bits = 1; static_cast<int>(samples.size()) < length;) {
        bits = bits * 1664525u + 1013904223u;
        samples.push_back(static_cast<float>(static_cast<int>(bits)) * 0x1p-31f);
    }
    return samples;
}

template <class Converter>
void runAlone(benchmark::State& state, int factor) {
    StyleRig rig(factor);
    Converter converter(&rig.style);
    const std::vector<float> in = noise(blockSize * maxFactor);
    std::vector<float> out(in.size());
    bench::measureBlocks(state, blockSize,
                         [&] { converter.process(in.data(), out.data(), blockSize); });
}

template <class Converter>
void runGroup(benchmark::State& state, int factor, int numChannels, simd::InstructionSet set) {
    simd::ScopedInstructionSet scope(set);
    StyleRig rig(factor);
    std::vector<std::unique_ptr<Converter>> converters;
    std::vector<std::vector<float>> ins, outs;
    std::vector<typename Converter::Job> jobs;
    for (int i = 0; i < numChannels; ++i) {
        converters.push_back(std::make_unique<Converter>(&rig.style));
        ins.push_back(noise(blockSize * maxFactor));
        outs.emplace_back(ins.back().size());
        jobs.push_back({converters.back().get(), ins.back().data(), outs.back().data()});
    }
    bench::measureBlocks(state, blockSize * numChannels,
                         [&] { Converter::processGroup(jobs, blockSize); });
}

void add(const std::string& name, auto run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime();
}

template <class Converter, class Twin>
void registerDirection(const std::string& direction) {
    for (const int factor : {2, 4, 8}) {
        const std::string name = direction + "/factor:" + std::to_string(factor);
        add(name + "/scalar", [=](benchmark::State& state) { runAlone<Twin>(state, factor); });
        for (const simd::InstructionSet set : simd::supportedSets())
            for (const int numChannels : {1, 2, 4, 8})
                add(name + "/channels:" + std::to_string(numChannels) + "/" + simd::nameOf(set),
                    [=](benchmark::State& state) {
                        runGroup<Converter>(state, factor, numChannels, set);
                    });
    }
}

}  // namespace

int main(int argc, char** argv) {
    registerDirection<sr::IIRInterpolator, sr::ScalarInterpolator>("up");
    registerDirection<sr::IIRDecimator, sr::ScalarDecimator>("down");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
