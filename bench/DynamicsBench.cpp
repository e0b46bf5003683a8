// What the dynamics stages cost, with controls that stand still and controls that move, in every
// instruction set this processor has. A block is what the graph cuts: 256 samples.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "modulation/sources/dynamics/Capacitor.h"
#include "modulation/sources/dynamics/Detector.h"
#include "modulation/sources/dynamics/PeakHold.h"
#include "support/BlockBenchmark.h"
#include "support/Loop.h"

namespace {

using namespace cinder;
using bench::Loop;

constexpr int blockSize = 256;

/// Sound that rises and falls several times within the block, with some noise on top.
std::vector<float> sound(float peak) {
    std::vector<float> samples;
    unsigned seed = 1;
    for (int i = 0; i < blockSize; ++i) {
        seed = seed * 1664525u + 1013904223u;
        const float noise = static_cast<float>(seed >> 8) * 0x1p-24f - 0.5f;
        samples.push_back(peak * (0.8f * std::sin(0.11f * static_cast<float>(i)) + 0.4f * noise));
    }
    return samples;
}

template <class Stage>
void run(benchmark::State& state, wave::Environment& environment, Stage& stage, float peak) {
    Loop input(&environment, sound(peak), false);
    stage.setInput(&input);
    bench::measureBlocks(state, blockSize, [&] {
        environment.beginBlock();
        benchmark::DoNotOptimize(stage.pull(blockSize)->data());
        environment.render(blockSize, 0);
    });
}

void runDetector(benchmark::State& state, Detector::GainChangeDomain domain, bool moves) {
    wave::Environment environment;
    Loop threshold(&environment, {-30.0f}, !moves);
    Detector stage(&environment);
    stage.threshold.setSource(&threshold);
    stage.gainChangeDomain = domain;
    stage.purpose = Detector::Purpose::Expand;
    stage.ratio.getParameter().setValue(2.0f, 0.0f);
    stage.kneeWidth.getParameter().setValue(12.0f, 0.0f);
    run(state, environment, stage, domain == Detector::GainChangeDomain::Linear ? 1.0f : 60.0f);
}

void runCapacitor(benchmark::State& state, float peak, const std::vector<float>& attacks) {
    wave::Environment environment;
    const Capacitor::Style style;
    Loop attack(&environment, attacks, attacks.size() == 1);
    Capacitor stage(&environment, &style);
    stage.attack.setSource(&attack);
    run(state, environment, stage, peak);
}

void runPeakHold(benchmark::State& state, float holdMs, bool moves) {
    wave::Environment environment;
    Loop hold(&environment, {holdMs}, !moves);
    PeakHold stage(&environment);
    stage.hold.setSource(&hold);
    run(state, environment, stage, 1.0f);
}

std::vector<float> risingTimes() {
    std::vector<float> times;
    for (int i = 0; i < blockSize; ++i)
        times.push_back(0.01f + 0.0001f * static_cast<float>(i));
    return times;
}

void add(const std::string& name, simd::InstructionSet set, void (*body)(benchmark::State&)) {
    benchmark::RegisterBenchmark((name + "/" + simd::nameOf(set)).c_str(),
                                 [=](benchmark::State& state) {
                                     simd::ScopedInstructionSet scope(set);
                                     body(state);
                                 })
        ->UseManualTime();
}

using Body = benchmark::State&;
using Domain = Detector::GainChangeDomain;

constexpr struct {
    const char* name;
    void (*body)(benchmark::State&);
} benchmarks[] = {
    {"detector, dB, standing", [](Body s) { runDetector(s, Domain::Decibel, false); }},
    {"detector, dB, moving", [](Body s) { runDetector(s, Domain::Decibel, true); }},
    {"detector, linear, standing", [](Body s) { runDetector(s, Domain::Linear, false); }},
    {"detector, linear, moving", [](Body s) { runDetector(s, Domain::Linear, true); }},
    {"capacitor, standing", [](Body s) { runCapacitor(s, 30.0f, {0.01f}); }},
    {"capacitor, moving", [](Body s) { runCapacitor(s, 30.0f, risingTimes()); }},
    {"capacitor, at rest", [](Body s) { runCapacitor(s, 0.0f, {0.01f}); }},
    {"peak hold 2 ms, standing", [](Body s) { runPeakHold(s, 2.0f, false); }},
    {"peak hold 2 ms, moving", [](Body s) { runPeakHold(s, 2.0f, true); }},
    {"peak hold 0 ms, standing", [](Body s) { runPeakHold(s, 0.0f, false); }},
};

}  // namespace

int main(int argc, char** argv) {
    for (const auto& row : benchmarks)
        for (const simd::InstructionSet set : simd::supportedSets())
            add(row.name, set, row.body);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
