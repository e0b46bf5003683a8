#pragma once

#include <memory>

#include "distortion/styles/StyleSet.h"
#include "support/StageRig.h"

namespace cinder::test {

/// The styles of a process.
inline const StyleSet& allStyles() {
    static const StyleSet set;
    return set;
}

/// Distortion and cabinet of one band in one or two channels, each with a signal of its own.
struct BandRig {
    explicit BandRig(const std::vector<std::vector<float>>& signals, float rate = 44100.0f,
                     int factor = 1) {
        environment.setSampleRate(rate);
        converterStyle.setFactor(factor);
        for (const std::vector<float>& signal : signals) {
            channels.push_back(std::make_unique<Channel>(*this, signal, seed++));
            controller.addProcessors(&channels.back()->distortion, &channels.back()->cabinet);
        }
        allStyles().addTo(controller);
    }
    void set(StyleId style, float drive) {
        RealtimeGuard guard;
        controller.style = static_cast<int>(style);
        for (auto& channel : channels)
            channel->distortion.drive.getParameter().setValue(drive, 0.0f);
    }
    void link() {
        channels[1]->distortion.link(channels[0]->distortion);
        channels[1]->cabinet.link(channels[0]->cabinet);
    }

    struct Channel {
        Channel(BandRig& rig, const std::vector<float>& signal, std::uint32_t seed)
            : input(&rig.environment, signal),
              distortion(&rig.converterStyle, &rig.capacitorStyle, seed),
              cabinet(&rig.environment) {
            distortion.setInput(&input);
            cabinet.setInput(&distortion);
        }
        SignalSource input;
        DistortionProcessor distortion;
        CabinetProcessor cabinet;
    };

    wave::Environment environment;
    sr::IIRConverterStyle converterStyle{&environment};
    Capacitor::Style capacitorStyle;
    std::uint32_t seed = 1;
    std::vector<std::unique_ptr<Channel>> channels;
    DistortionController controller;
};

}  // namespace cinder::test
