#pragma once

#include "cinder/bands/BandsParameters.h"
#include "distortion/styles/DistortionProcessor.h"
#include "distortion/tone/CabinetProcessor.h"
#include "dsp/filters/crossover/MultiBand.h"
#include "dsp/stages/Mixer.h"

#include <array>
#include <cstdint>
#include <memory>

namespace cinder {

static_assert(maxBands == CrossoverMultiBandModel::maxBands);

/// What all channels have in common.
struct BandsShared {
    explicit BandsShared(wave::Environment* environment) : converterStyle(environment) {}

    CrossoverMultiBandModel model;
    sr::IIRConverterStyle converterStyle;
    Capacitor::Style capacitorStyle;
};

/// What one channel goes through:
///
///     input - split -+- distortion 1 - cabinet 1 -+- sum
///                    +-  ...                      +
///                    +- distortion 6 - cabinet 6 -+
///
/// Shape   all six bands are there from the start; one whose gain in the sum is 0 is not pulled
struct ChannelGraph {
    struct Band {
        Band(BandsShared& shared, wave::Producer* input, std::uint32_t noiseSeed);

        DistortionProcessor distortion;
        CabinetProcessor cabinet;
    };

    /// The bands' noise is seeded by `noiseSeed` and the numbers behind it.
    ChannelGraph(BandsShared& shared, wave::Producer* input, std::uint32_t noiseSeed);

    /// Lets both channels run as lanes. Before audio runs.
    void link(ChannelGraph& other);

    MultiBand split;
    std::array<std::unique_ptr<Band>, maxBands> bands;
    Mixer sum;
};

}  // namespace cinder
