#include "cinder/measure/StyleProbe.h"

#include <algorithm>

#include "core/platform/Denormals.h"

namespace cinder {

namespace {

/// Plays what it is pointed at.
class Feed final : public wave::Source {
public:
    using Source::Source;

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned) noexcept CINDER_REALTIME override {
        std::copy_n(next, numSamples, block->data());
        next += numSamples;
    }

    const float* next = nullptr;
};

}  // namespace

struct StyleProbe::Graph {
    Graph(const StyleSet& styles, const StyleProbeSetup& setup);

    wave::Environment environment;
    sr::IIRConverterStyle converterStyle{&environment};
    Capacitor::Style capacitorStyle;
    Feed feed{&environment};
    DistortionProcessor distortion;
    CabinetProcessor cabinet{&environment};
    wave::Producer* output = nullptr;
    int latency = 0;
};

StyleProbe::Graph::Graph(const StyleSet& styles, const StyleProbeSetup& setup)
    : distortion(&converterStyle, &capacitorStyle, setup.noiseSeed) {
    environment.setSampleRate(static_cast<float>(setup.sampleRate));
    converterStyle.setFactor(setup.factor);
    distortion.setInput(&feed);
    cabinet.setInput(&distortion);
    distortion.drive.getParameter().setValue(setup.drive, 0.0f);

    const DistortionStyle& style = styles.style(setup.style);
    style.apply(distortion);
    output = &distortion;
    const CabinetStyle* const speaker = styles.cabinetOf(setup.style);
    if (setup.cabinet && speaker) {
        speaker->apply(cabinet);
        output = &cabinet;
    }
    if (style.getRecipe().setup.path.clip == 1)
        latency = converterStyle.getLatency(converterStyle.getFactor());
    environment.reset(wave::Environment::ResetMode::All);  // the switches stand at once
}

StyleProbe::StyleProbe(const StyleSet& styles, const StyleProbeSetup& setup)
    : graph(std::make_unique<Graph>(styles, setup)) {}

StyleProbe::~StyleProbe() = default;

std::vector<float> StyleProbe::play(std::span<const float> in) {
    const platform::FlushDenormalsScope asInAHost;
    wave::Environment& environment = graph->environment;
    const auto longest = static_cast<std::size_t>(environment.getMaxBlockSize());
    std::vector<float> out;
    out.reserve(in.size());
    while (!in.empty()) {
        const std::size_t count = std::min(longest, in.size());
        const int numSamples = static_cast<int>(count);
        graph->feed.next = in.data();
        environment.beginBlock();
        const float* const block = graph->output->pull(numSamples)->data();
        out.insert(out.end(), block, block + count);
        environment.render(numSamples, 0);
        in = in.subspan(count);
    }
    return out;
}

int StyleProbe::latency() const {
    return graph->latency;
}

}  // namespace cinder
