// What a band's distortion and cabinet cost in each style: one channel, two channels that are
// linked and two that are not, at the base rate and oversampled 8 times. A block is what the graph
// cuts: 256 samples of each channel, and ns/sample is per sample of a channel at the base rate.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/platform/Denormals.h"
#include "distortion/styles/StyleSet.h"
#include "support/BlockBenchmark.h"

namespace {

using namespace cinder;

constexpr int blockSize = 256;

/// One block, over and over.
class Loop final : public wave::Source {
public:
    explicit Loop(wave::Environment* environment) : Source(environment) {
        for (int i = 0; i < blockSize; ++i)
            (*ownBlock)[i] = 0.3f * std::sin(0.04908739f * static_cast<float>(i)) +
                             0.1f * std::sin(1.1044662f * static_cast<float>(i));
    }
    void render(wave::BasicBlock<float>*, int, unsigned) noexcept CINDER_REALTIME override {}
};

enum class Channels { Mono, Unlinked, Linked };

struct Band {
    Band(const StyleSet& styles, StyleId style, Channels channels, int factor) {
        environment.setSampleRate(48000.0f);
        converterStyle.setFactor(factor);
        for (int c = 0; c < (channels == Channels::Mono ? 1 : 2); ++c) {
            distortions.push_back(
                std::make_unique<DistortionProcessor>(&converterStyle, &capacitorStyle, 1u));
            cabinets.push_back(std::make_unique<CabinetProcessor>(&environment));
            distortions.back()->setInput(&input);
            distortions.back()->drive.getParameter().setValue(0.5f, 0.0f);
            cabinets.back()->setInput(distortions.back().get());
            controller.addProcessors(distortions.back().get(), cabinets.back().get());
        }
        if (channels == Channels::Linked) {
            distortions[1]->link(*distortions[0]);
            cabinets[1]->link(*cabinets[0]);
        }
        styles.addTo(controller);
        controller.style = static_cast<int>(style);
    }
    void run() {
        environment.beginBlock();
        for (const auto& cabinet : cabinets)
            benchmark::DoNotOptimize(cabinet->pull(blockSize)->data());
        environment.render(blockSize, 0);
    }

    wave::Environment environment;
    Loop input{&environment};
    sr::IIRConverterStyle converterStyle{&environment};
    Capacitor::Style capacitorStyle;
    std::vector<std::unique_ptr<DistortionProcessor>> distortions;
    std::vector<std::unique_ptr<CabinetProcessor>> cabinets;
    DistortionController controller;
};

constexpr struct {
    const char* name;
    Channels channels;
} layouts[] = {
    {"mono", Channels::Mono}, {"stereo", Channels::Unlinked}, {"stereo, linked", Channels::Linked}};

}  // namespace

int main(int argc, char** argv) {
    const StyleSet styles;
    for (const StyleRecipe& recipe : styleRecipes)
        for (const int factor : {1, 8})
            for (const auto& layout : layouts)
                benchmark::RegisterBenchmark(
                    (std::string(recipe.name) + "/" + std::to_string(factor) + "x/" + layout.name)
                        .c_str(),
                    [&styles, &recipe, &layout, factor](benchmark::State& state) {
                        Band band(styles, recipe.id, layout.channels, factor);
                        const platform::FlushDenormalsScope flush;
                        const int numChannels = static_cast<int>(band.cabinets.size());
                        bench::measureBlocks(state, blockSize * numChannels, [&] { band.run(); });
                    })
                    ->UseManualTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
