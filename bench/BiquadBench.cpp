// What recursive filters cost, in every instruction set this processor has: the sections alone, one
// channel by the plain form, one channel as it runs, and two channels as lanes; then equalisers
// with controls that stand still and controls that move, in mono and stereo. A block is what the
// graph cuts: 256 samples of each channel, and ns/sample is per sample of a channel.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/platform/Denormals.h"
#include "core/simd/InstructionSet.h"
#include "dsp/filters/BiquadKernels.h"
#include "dsp/filters/EQFilter.h"
#include "support/BlockBenchmark.h"
#include "support/Loop.h"

namespace {

using namespace cinder;
using bench::Loop;

constexpr int blockSize = 256;

std::vector<float> sound() {
    std::vector<float> samples;
    for (int i = 0; i < blockSize; ++i)
        samples.push_back(0.5f * std::sin(0.05f * static_cast<float>(i)) +
                          0.25f * std::sin(1.1f * static_cast<float>(i)));
    return samples;
}

enum class Form { Plain, Single, Pair };

void runSections(benchmark::State& state, Form form, int numSections, int runLength) {
    const BiquadCoefficients bell = {1.02, -1.87, 0.87, -1.87, 0.89};
    const std::vector<BiquadCoefficients> coefficients(static_cast<std::size_t>(numSections), bell);
    const int numChannels = form == Form::Pair ? 2 : 1;
    const std::vector<float> in = sound();
    std::vector<float> out[2] = {in, in};
    std::vector<BiquadState> states[2];
    BiquadLane lanes[2];
    for (int c = 0; c < 2; ++c) {
        states[c].resize(static_cast<std::size_t>(numSections));
        lanes[c] = {in.data(), out[c].data(), states[c].data()};
    }
    const std::vector<BiquadRun> runs(static_cast<std::size_t>(blockSize / runLength),
                                      {runLength, {coefficients.data(), coefficients.data()}});
    const RunBiquads run = form == Form::Plain    ? biquadKernels->plain
                           : form == Form::Single ? biquadKernels->single
                                                  : biquadKernels->pair;
    bench::measureBlocks(state, blockSize * numChannels, [&] {
        run(lanes, runs.data(), static_cast<int>(runs.size()), 0, numSections);
    });
}

/// Octaves up and down within a block, by `octavesPerSample`.
std::vector<float> sweep(float octavesPerSample) {
    std::vector<float> log2Hz;
    for (int i = 0; i < blockSize; ++i)
        log2Hz.push_back(10.0f + octavesPerSample * std::abs(static_cast<float>(i - 128)));
    return log2Hz;
}

enum class Channels { Mono, Unlinked, Linked };

void runEqualiser(benchmark::State& state, Channels channels, EQFilter::Slope slope,
                  const std::vector<float>& log2Hz) {
    wave::Environment environment;
    Loop input(&environment, sound(), false);
    Loop control(&environment, log2Hz, log2Hz.size() == 1);
    EQFilter filters[2] = {EQFilter(&environment), EQFilter(&environment)};
    for (EQFilter& filter : filters) {
        filter.setInput(&input);
        filter.frequency.setSource(&control);
        filter.gain.getParameter().setValue(6.0f, 0.0f);
        filter.slope = slope;
    }
    if (channels == Channels::Linked) {
        filters[0].setPartner(&filters[1]);
        filters[0].link(EQFilter::LinkMode::Shared);
    }
    const int numChannels = channels == Channels::Mono ? 1 : 2;
    const platform::FlushDenormalsScope flush;
    bench::measureBlocks(state, blockSize * numChannels, [&] {
        environment.beginBlock();
        for (int c = 0; c < numChannels; ++c)
            benchmark::DoNotOptimize(filters[c].pull(blockSize)->data());
        environment.render(blockSize, 0);
    });
}

template <class Body>
void add(const std::string& name, simd::InstructionSet set, Body body) {
    benchmark::RegisterBenchmark((name + "/" + simd::nameOf(set)).c_str(),
                                 [=](benchmark::State& state) {
                                     simd::ScopedInstructionSet scope(set);
                                     body(state);
                                 })
        ->UseManualTime();
}

constexpr struct {
    const char* name;
    Form form;
} forms[] = {{"plain", Form::Plain}, {"single", Form::Single}, {"pair", Form::Pair}};

constexpr struct {
    const char* name;
    Channels channels;
} layouts[] = {
    {"mono", Channels::Mono}, {"stereo", Channels::Unlinked}, {"stereo, linked", Channels::Linked}};

const struct {
    const char* name;
    std::vector<float> log2Hz;
} movements[] = {{"standing", {10.0f}},
                 {"sweep, a design per 32 samples", sweep(0.001f)},
                 {"sweep, a design per 4 samples", sweep(0.03f)}};

void addAll(simd::InstructionSet set) {
    for (const int numSections : {1, 2, 4})
        for (const auto& form : forms)
            for (const int runLength : {blockSize, 32, 4})
                add("sections:" + std::to_string(numSections) + "/" + form.name +
                        "/samples per design:" + std::to_string(runLength),
                    set, [=](benchmark::State& state) {
                        runSections(state, form.form, numSections, runLength);
                    });
    for (const auto slope : {EQFilter::Slope::Poles2, EQFilter::Slope::Poles4})
        for (const auto& movement : movements)
            for (const auto& layout : layouts)
                add("bell of " + std::to_string(polesOf(slope, EQFilter::Shape::Bell)) + " poles/" +
                        movement.name + "/" + layout.name,
                    set, [&, slope](benchmark::State& state) {
                        runEqualiser(state, layout.channels, slope, movement.log2Hz);
                    });
}

}  // namespace

int main(int argc, char** argv) {
    for (const simd::InstructionSet set : simd::supportedSets())
        addAll(set);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
