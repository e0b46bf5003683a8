#pragma once

#include <array>
#include <memory>

#include "distortion/strip/CinderCompander.h"
#include "distortion/styles/DistortionController.h"
#include "dsp/filters/FilterAnalyzer.h"
#include "dsp/filters/crossover/CrossoverMultiBandModel.h"
#include "dsp/sr/IIRConverterStyle.h"
#include "dsp/stages/LevelPanConverter.h"
#include "dsp/stages/MidSideConverter.h"
#include "dsp/stages/Mixer.h"
#include "dsp/stages/ValueConverters.h"
#include "modulation/matrix/LevelPanTarget.h"
#include "params/tree/CinderParameters.h"
#include "processor/BandTargets.h"

namespace cinder {

/// What the channels of a band share.
struct SharedBand {
    SharedBand(ModulationMatrix& matrix, BandParameterSet& parameters, int band,
               wave::Producer* inputPeak);

    DistortionController controller;
    CinderCompander compander;
    GainLevelConverter level;
    LevelPanConverter outputPan, drivePan;
};

/// What the channels of a processor share, besides the inputs and the sources of modulation.
struct SharedGraph {
    static constexpr int numBands = BandParameterSetList::maxBands;

    SharedGraph(ModulationMatrix& matrix, CinderParameters& tree, int numChannels);

    wave::Producer* target(int band, BandTarget place) const;
    wave::Producer* target(GlobalTarget place) const;

    ModulationMatrix& matrix;
    CinderParameters& tree;
    /// Pans and mid/side are for exactly two channels.
    const bool isStereo;
    CrossoverMultiBandModel bandModel;
    Mixer inputPeak, sideChainPeak;  // the loudest channel, sample by sample
    FilterAnalyzer feedbackGate;
    LevelPanTarget inputLevelPan, outputLevelPan;
    LevelPanTarget::VoiceController inputLevelPanControl, outputLevelPanControl;
    sr::IIRConverterStyle distortionStyle, clipperStyle;
    wave::FloatParameterSource qualityGain;  // 0 while the converters change
    std::array<std::unique_ptr<SharedBand>, numBands> bands;
    MidSideConverter midSideEncoder, wetDecoder, dryDecoder;
};

}  // namespace cinder
