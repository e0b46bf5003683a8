// What an XLFO costs: a block of 256 samples at 48 kHz, all of it one XLFO, in every state that
// makes a difference. Rows named twin are the same work written sample by sample, as the suite
// trusts it. Ratios are to the memcpy of one block.
//
//     bench_xlfo --blocks 1000 "sine glide"    runs blocks and nothing else, for an instruction
//     count
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "modulation/sources/xlfo/XLFO.h"
#include "modulation/sources/xlfo/XLFOTwin.h"
#include "support/BlockBenchmark.h"
#include "support/Loop.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

struct Case {
    const char* name;
    float frequency;
    int numSteps;
    GlideCurve curve;
    float glide;
    bool frequencyMoves, glideMoves, offsetMoves;
};
// clang-format off
constexpr Case cases[] = {
    // name                Hz    steps curve               glide moving: frequency glide offset
    {"held",                  1.0f,  2, GlideCurve::Linear, 0.0f, false,           false, false},
    {"linear glide",          1.0f,  2, GlideCurve::Linear, 1.0f, false,           false, false},
    {"root glide",            1.0f,  2, GlideCurve::Sqrt,   1.0f, false,           false, false},
    {"sine glide",            1.0f,  2, GlideCurve::Sine,   1.0f, false,           false, false},
    {"16 steps at 10 Hz",    10.0f, 16, GlideCurve::Linear, 0.5f, false,           false, false},
    {"16 steps at 500 Hz",  500.0f, 16, GlideCurve::Linear, 0.5f, false,           false, false},
    {"frequency moves",       1.0f,  2, GlideCurve::Linear, 0.5f, true,            false, false},
    {"glide moves",           1.0f,  2, GlideCurve::Linear, 0.5f, false,           true,  false},
    {"offset moves",          1.0f,  2, GlideCurve::Linear, 0.5f, false,           false, true},
    {"all move, sine",        1.0f,  2, GlideCurve::Sine,   0.5f, true,            true,  true},
};
// clang-format on

std::vector<float> controlOf(float value, bool moves) {
    if (!moves) return {value};
    std::vector<float> signal;
    for (int i = 0; i < blockSize; ++i)
        signal.push_back(value + static_cast<float>(i % 64) * 0.001f);
    return signal;
}

class Rig {
public:
    explicit Rig(const Case& c)
        : frequency(&environment, controlOf(c.frequency, c.frequencyMoves), !c.frequencyMoves),
          glide(&environment, controlOf(0.0f, c.glideMoves), !c.glideMoves),
          offset(&environment, controlOf(0.0f, c.offsetMoves), !c.offsetMoves) {
        environment.setSampleRate(48000.0f);
        xlfo.frequency.setSource(&frequency);
        xlfo.glide.setSource(&glide);
        xlfo.phaseOffset.setSource(&offset);
        xlfo.numSteps = twin.n = c.numSteps;
        twin.layOut();
        for (std::size_t i = 0; i < XLFO::maxSteps; ++i) {
            const float value = i % 2 == 0 ? -1.0f : 1.0f;
            xlfo.steps[i].value.assign(value);
            xlfo.steps[i].glide.assign(c.glide);
            xlfo.steps[i].glideCurve = c.curve;
            twin.steps[i].value = value;
            twin.steps[i].glide = c.glide;
            twin.steps[i].curve = static_cast<int>(c.curve);
        }
    }
    void cycle() {
        environment.beginBlock();
        benchmark::DoNotOptimize(xlfo.pull(blockSize)->data());
        environment.render(blockSize, 0);
    }
    void cycleOfTwin() {
        environment.beginBlock();
        twin.render(frequency.pull(blockSize)->data(), glide.pull(blockSize)->data(),
                    offset.pull(blockSize)->data(), 48000.0, out, blockSize);
        benchmark::DoNotOptimize(out);
    }

private:
    wave::Environment environment;
    bench::Loop frequency, glide, offset;
    XLFO xlfo{&environment};
    test::XLFOTwin twin;
    float out[blockSize] = {};
};

int runBlocks(int numBlocks, std::string_view name) {
    for (const Case& c : cases) {
        if (name != c.name) continue;
        Rig rig(c);
        for (int i = 0; i < numBlocks; ++i)
            rig.cycle();
        return 0;
    }
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], "--blocks") == 0)
        return runBlocks(std::atoi(argv[2]), argv[3]);
    for (const Case& c : cases)
        for (const bool isTwin : {false, true})
            benchmark::RegisterBenchmark((std::string(isTwin ? "twin/" : "xlfo/") + c.name).c_str(),
                                         [=](benchmark::State& state) {
                                             Rig rig(c);
                                             bench::measureBlocks(state, blockSize, [&] {
                                                 isTwin ? rig.cycleOfTwin() : rig.cycle();
                                             });
                                         })
                ->UseManualTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
