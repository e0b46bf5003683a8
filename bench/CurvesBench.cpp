// What the curves cost: the scalar reference and the block functions in every instruction set this
// processor has, on blocks as they come out of an oversampler at factor 8.
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "core/simd/Sanitise.h"
#include "distortion/curves/Clip.h"
#include "distortion/curves/WaveShaper.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int blockSize = 2048;

// Two sines whose sum goes well into the bend of every curve.
std::vector<float> signal() {
    std::vector<float> samples;
    for (int i = 0; i < blockSize; ++i)
        samples.push_back(2.0f * std::sin(0.013f * static_cast<float>(i)) +
                          1.5f * std::sin(0.37f * static_cast<float>(i)));
    return samples;
}

void run(benchmark::State& state, const WaveShaper& settings, bool isScalar,
         simd::InstructionSet set) {
    simd::ScopedInstructionSet scope(set);
    const auto shaper =
        isScalar
            ? std::make_unique<WaveShaper>(settings.curve, settings.power, settings.negativeScale)
            : makeWaveShaper(settings.curve, settings.power, settings.negativeScale);
    const std::vector<float> in = signal();
    std::vector<float> out(in.size());
    bench::measureBlocks(state, blockSize,
                         [&] { shaper->process(in.data(), out.data(), blockSize); });
}

void registerCurve(int curve, float power, float negativeScale) {
    const auto settings = std::make_shared<WaveShaper>(curve, power, negativeScale);
    const auto add = [&](const std::string& how, bool isScalar, simd::InstructionSet set) {
        std::string name = std::string(curveNames[curve]) +
                           "/power:" + std::to_string(power).substr(0, 3) + "/" + how;
        std::replace(name.begin(), name.end(), ' ', '_');
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
            run(state, *settings, isScalar, set);
        })->UseManualTime();
    };
    add("scalar", true, simd::InstructionSet::baseline);
    const auto fastest = makeWaveShaper(curve, power, negativeScale);
    const WaveShaper& made = *fastest;
    if (typeid(made) == typeid(WaveShaper)) return;
    for (const simd::InstructionSet set : simd::supportedSets())
        add(simd::nameOf(set), false, set);
}

void registerSanitise(simd::InstructionSet set) {
    const std::string name = std::string("sanitise/") + simd::nameOf(set);
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        simd::ScopedInstructionSet scope(set);
        const std::vector<float> in = signal();
        std::vector<float> out(in.size());
        bench::measureBlocks(state, blockSize,
                             [&] { simd::sanitise(in.data(), out.data(), blockSize); });
    })->UseManualTime();
}

}  // namespace

int main(int argc, char** argv) {
    for (int curve = 0; curve < numCurves; ++curve)
        registerCurve(curve, 1.0f, 1.0f);
    for (const int curve : {arcTangentCurve, divisionByMagnitudeCurve})
        registerCurve(curve, 0.8f, 0.5f);
    for (const simd::InstructionSet set : simd::supportedSets())
        registerSanitise(set);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
