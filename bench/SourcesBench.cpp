// What the envelope generators, the envelope followers and the MIDI sources cost, at work and at
// rest, in every instruction set this processor has. All of them run in every block of 256 samples,
// whether a slot reads them or not.
#include <cmath>
#include <string>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "modulation/sources/envelopes/EnvelopeFollower.h"
#include "modulation/sources/envelopes/EnvelopeGenerator.h"
#include "modulation/sources/midi/MidiModSource.h"
#include "modulation/sources/midi/MidiModSourceCache.h"
#include "support/BlockBenchmark.h"
#include "support/Loop.h"

namespace {

using namespace cinder;
using bench::Loop;

constexpr int blockSize = 256;

/// The magnitude of a tone whose level rises and falls within the block.
std::vector<float> magnitudes() {
    std::vector<float> samples;
    for (int i = 0; i < blockSize; ++i) {
        const auto t = static_cast<float>(i);
        samples.push_back(std::abs(std::sin(0.11f * t)) * (0.6f + 0.4f * std::cos(0.0245f * t)));
    }
    return samples;
}

std::vector<float> movingTimes() {
    std::vector<float> times;
    for (int i = 0; i < blockSize; ++i)
        times.push_back(0.01f + 0.0001f * static_cast<float>(i));
    return times;
}

/// One cycle: `before`, then a pull where somebody listens, then the sinks.
template <class Before>
void run(benchmark::State& state, wave::Environment& environment, wave::Producer& source,
         bool pulls, Before before) {
    bench::measureBlocks(state, blockSize, [&] {
        before();
        environment.beginBlock();
        if (pulls) benchmark::DoNotOptimize(source.pull(blockSize)->data());
        environment.render(blockSize, 0);
    });
}

enum class Stage { Idle, Attack, Sustain };

void runGenerator(benchmark::State& state, Stage stage, bool pulls, float level) {
    wave::Environment environment;
    const EnvelopeCurves curves;
    Loop input(&environment, level > 0.0f ? magnitudes() : std::vector<float>{0.0f}, false);
    Trigger trigger(&environment, &input);
    trigger.threshold.assign(level);
    trigger.enabled = level >= 0.0f;
    EnvelopeGenerator generator(&environment, &curves);
    generator.setTrigger(&trigger);
    generator.attack.getParameter().setValue(stage == Stage::Attack ? 10.0f : 0.002f, 0.0f);
    if (stage == Stage::Sustain) generator.requestStart();
    run(state, environment, generator, pulls, [&] {
        if (stage == Stage::Attack) generator.requestStart();
    });
}

void runFollower(benchmark::State& state, const std::vector<float>& samples, bool moves) {
    wave::Environment environment;
    Loop input(&environment, samples, false);
    Loop times(&environment, movingTimes(), false);
    EnvelopeFollower follower(&environment);
    follower.setInput(&input);
    if (moves) follower.attack.setSource(&times);
    if (moves) follower.release.setSource(&times);
    run(state, environment, follower, true, [] {});
}

void runMidi(benchmark::State& state, bool moves) {
    wave::Environment environment;
    MidiModSource::Cache cache;
    MidiModSource source(&environment, &cache);
    float wheel = 0.0f;
    run(state, environment, source, true, [&] {
        if (moves) cache.modulationWheel(wheel = 1.0f - wheel);
    });
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
constexpr float byNotes = -1.0f, silent = 0.0f;

constexpr struct {
    const char* name;
    void (*body)(benchmark::State&);
} benchmarks[] = {
    {"empty cycle, control at rest", [](Body s) { runMidi(s, false); }},
    {"MIDI source, moving", [](Body s) { runMidi(s, true); }},
    {"generator, idle, unheard", [](Body s) { runGenerator(s, Stage::Idle, false, byNotes); }},
    {"generator, idle, heard", [](Body s) { runGenerator(s, Stage::Idle, true, byNotes); }},
    {"generator, idle, silence", [](Body s) { runGenerator(s, Stage::Idle, false, silent); }},
    {"generator, attack", [](Body s) { runGenerator(s, Stage::Attack, true, byNotes); }},
    {"generator, sustain", [](Body s) { runGenerator(s, Stage::Sustain, true, byNotes); }},
    {"generator, sustain, sound", [](Body s) { runGenerator(s, Stage::Sustain, true, 0.3f); }},
    {"follower, sound", [](Body s) { runFollower(s, magnitudes(), false); }},
    {"follower, sound, times moving", [](Body s) { runFollower(s, magnitudes(), true); }},
    {"follower, at rest", [](Body s) { runFollower(s, {0.0f}, false); }},
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
