// What the drive stages cost per sample of a channel, in every instruction set this processor has:
// the clipper at factors 1 and 8, one channel, two that are not linked and two that are, with a
// drive that stands still and one that moves; then the others.
#include <memory>
#include <string>
#include <vector>

#include "core/platform/Denormals.h"
#include "core/simd/InstructionSet.h"
#include "distortion/curves/Clip.h"
#include "distortion/drive/BitCrusher.h"
#include "distortion/drive/FunctionTableClipper.h"
#include "distortion/drive/NoiseFilter.h"
#include "distortion/drive/Smudger.h"
#include "distortion/drive/SoftClipper.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

/// One block of noise, over and over.
class Loop final : public wave::Source {
public:
    Loop(wave::Environment* environment, float from, float to, bool tellsConstant)
        : Source(environment) {
        unsigned bits = 1;
        for (int i = 0; i < blockSize; ++i) {
            bits = bits * 1664525u + 1013904223u;
            (*ownBlock)[i] = from + (to - from) * static_cast<float>(bits >> 8) * 0x1p-24f;
        }
        setConstant(tellsConstant);
    }
    void render(wave::BasicBlock<float>*, int, unsigned) noexcept CINDER_REALTIME override {}
};

/// An environment with a sound, and drives to choose from.
struct Rig {
    explicit Rig(int factor) { converterStyle.setFactor(factor); }

    /// Pulls the stages block by block.
    void run(benchmark::State& state, std::vector<wave::FilterBase*> stages) {
        for (wave::FilterBase* stage : stages)
            stage->setInput(&sound);
        const platform::FlushDenormalsScope flush;
        bench::measureBlocks(state, blockSize * static_cast<int>(stages.size()), [&] {
            environment.beginBlock();
            for (wave::FilterBase* stage : stages)
                benchmark::DoNotOptimize(stage->pull(blockSize)->data());
            environment.render(blockSize, 0);
        });
    }

    wave::Environment environment;
    sr::IIRConverterStyle converterStyle{&environment};
    Loop sound{&environment, -0.5f, 0.5f, false};
    Loop moving{&environment, 0.2f, 0.6f, false};
};

enum class Channels { Mono, Unlinked, Linked };
constexpr struct {
    const char* name;
    Channels channels;
} layouts[] = {
    {"mono", Channels::Mono}, {"stereo", Channels::Unlinked}, {"stereo, linked", Channels::Linked}};

template <class Stage>
void runChannels(benchmark::State& state, Rig& rig, Channels channels, Stage& left, Stage& right) {
    if (channels == Channels::Linked) {
        left.setPartner(&right);
        left.link();
    }
    if (channels == Channels::Mono)
        rig.run(state, {&left});
    else
        rig.run(state, {&left, &right});
}

void runClipper(benchmark::State& state, Channels channels, int factor, bool driveMoves) {
    Rig rig(factor);
    ClipperStyle style;
    makeStyle(style, sineCurve, 1.0f, 1.0f, -6.0f, 24.0f, -18.0f, 0.0f);
    FunctionTableClipper left(&rig.converterStyle), right(&rig.converterStyle);
    for (FunctionTableClipper* clipper : {&left, &right}) {
        clipper->setStyle(&style);
        if (driveMoves) clipper->drive.setSource(&rig.moving);
    }
    runChannels(state, rig, channels, left, right);
}

void runSoftClipper(benchmark::State& state, Channels channels, int factor) {
    Rig rig(factor);
    SoftClipper left(&rig.environment, &rig.converterStyle);
    SoftClipper right(&rig.environment, &rig.converterStyle);
    runChannels(state, rig, channels, left, right);
}

/// A stage with a drive that stands at `drive`, or moves where that is below 0.
template <class Stage>
void runDriven(benchmark::State& state, float drive) {
    Rig rig(1);
    Stage stage(&rig.environment);
    stage.drive.getParameter().setValue(drive, 0.0f);
    if (drive < 0.0f) stage.drive.setSource(&rig.moving);
    rig.run(state, {&stage});
}

void runNoise(benchmark::State& state) {
    Rig rig(1);
    const Capacitor::Style style;
    NoiseFilter filter(&rig.environment, &style, 1);
    filter.level.getParameter().setValue(3e-6f, 0.0f);
    rig.run(state, {&filter});
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

void addAll(simd::InstructionSet set) {
    for (const int factor : {1, 8})
        for (const auto& layout : layouts) {
            const Channels channels = layout.channels;
            const std::string suffix =
                std::string("/") + layout.name + "/factor:" + std::to_string(factor);
            for (const bool driveMoves : {false, true})
                add((driveMoves ? "clipper, drive moves" : "clipper") + suffix, set,
                    [=](auto& state) { runClipper(state, channels, factor, driveMoves); });
            add("soft clipper" + suffix, set,
                [=](auto& state) { runSoftClipper(state, channels, factor); });
        }
    constexpr struct {
        const char* name;
        float value;
    } drives[] = {{"0", 0.0f}, {"0.5", 0.5f}, {"moving", -1.0f}};
    for (const auto& drive : drives) {
        const float value = drive.value;
        add(std::string("crusher/drive:") + drive.name, set,
            [=](auto& state) { runDriven<BitCrusher>(state, value); });
        add(std::string("smudger/drive:") + drive.name, set,
            [=](auto& state) { runDriven<Smudger>(state, value); });
    }
    add("noise", set, runNoise);
}

}  // namespace

int main(int argc, char** argv) {
    for (const simd::InstructionSet set : simd::supportedSets())
        addAll(set);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
