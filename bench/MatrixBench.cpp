// What the matrix costs: all targets pulled once a block of 256 samples, as the signal path does,
// with 0, 10 and 50 slots. At rest all sources are constants and all base values stand still;
// moving, the sources move; on ramps, every base value does. Ratios are to the memcpy of one block,
// for all 195 targets together.
//
//     bench_matrix --blocks 1000 50 moving     runs blocks and nothing else, for an instruction
//     count
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "modulation/matrix/GlobalModulationProducer.h"
#include "support/BlockBenchmark.h"
#include "support/Loop.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

enum class Motion { AtRest, Moving, Ramping };

/// The slots go to the targets of the bands, one each, so that no two share a sum.
class Matrix {
public:
    Matrix(int numSlots, Motion motion) : motion(motion) {
        std::vector<float> wiggle(blockSize);
        for (int i = 0; i < blockSize; ++i)
            wiggle[static_cast<std::size_t>(i)] = static_cast<float>(i % 32) / 32.0f - 0.5f;
        for (int i = 0; i < numModulationSources; ++i) {
            sources.emplace_back(&environment,
                                 motion == Motion::AtRest ? std::vector{0.3f} : wiggle,
                                 motion == Motion::AtRest);
            matrix.setSource(i, &sources.back());
        }
        for (int i = 0; i < numModulationTargets; ++i)
            outputs.push_back(matrix.getTargetController(i));
        for (int slot = 0; slot < numSlots; ++slot) {
            matrix.setTargetValue(shape.levelTargetOf(slot), 0.16f);
            matrix.setSlotSource(slot, slot % numModulationSources);
            matrix.setSlotTarget(slot, targetNumber(TargetGroupId::Band, 0, 0) + slot);
        }
        cycle();
    }

    void cycle() {
        environment.beginBlock();
        if (motion == Motion::Ramping && ++numCycles % 20 == 0) {
            goal = 0.75f - goal;
            for (int i = 0; i < numModulationTargets; ++i)
                matrix.setTargetValue(i, goal);
        }
        for (wave::Producer* output : outputs)
            benchmark::DoNotOptimize(output->pull(blockSize));
        environment.render(blockSize, 0);
    }

private:
    const Motion motion;
    int numCycles = 0;
    float goal = 0.25f;
    wave::Environment environment;
    ModulationMatrixShape shape = ModulationMatrixShape::ofVocabulary();
    std::deque<bench::Loop> sources;
    ModulationMatrix matrix{&environment, &shape};
    std::vector<wave::Producer*> outputs;
};

struct Case {
    const char* name;
    Motion motion;
};
constexpr Case cases[] = {
    {"at rest", Motion::AtRest},
    {"moving", Motion::Moving},
    {"on ramps", Motion::Ramping},
};

int runBlocks(int numBlocks, int numSlots, std::string_view name) {
    for (const Case& c : cases) {
        if (name != c.name) continue;
        Matrix matrix(numSlots, c.motion);
        for (int i = 0; i < numBlocks; ++i)
            matrix.cycle();
        return 0;
    }
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::strcmp(argv[1], "--blocks") == 0)
        return runBlocks(std::atoi(argv[2]), std::atoi(argv[3]), argv[4]);
    for (const Case& c : cases)
        for (const int numSlots : {0, 10, 50})
            benchmark::RegisterBenchmark(
                ("matrix/" + std::to_string(numSlots) + " slots/" + c.name).c_str(),
                [=](benchmark::State& state) {
                    Matrix matrix(numSlots, c.motion);
                    bench::measureBlocks(state, blockSize, [&] { matrix.cycle(); });
                })
                ->UseManualTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
