#include "processor/SharedGraph.h"

#include "modulation/matrix/GlobalModulationProducer.h"
#include "params/PropPluginParameter.h"
#include "processor/SharedTables.h"

namespace cinder {

namespace {

constexpr float gateAttackMs = 50.0f, gateThreshold = 0.001f;
constexpr float qualityFadeMs = 5.0f;

constexpr int numberOf(GlobalTarget target) {
    return static_cast<int>(target);
}

}  // namespace

SharedBand::SharedBand(ModulationMatrix& matrix, BandParameterSet& parameters, int band,
                       wave::Producer* inputPeak)
    : compander(matrix.getEnvironment(), &SharedTables::get().capacitorStyle),
      level(matrix.getEnvironment()),
      outputPan(matrix.getEnvironment()),
      drivePan(matrix.getEnvironment()) {
    const auto target = [&](BandTarget place) {
        return matrix.getTargetController(bandTarget(band, place));
    };
    SharedTables::get().styles.addTo(controller);
    parameters.as<PropPluginParameter<int>>(BandParameter::Style).addProperty(&controller.style);
    compander.setInput(inputPeak);
    compander.dynamics.setSource(target(BandTarget::Dynamics));
    level.setInput(target(BandTarget::Level));
    outputPan.level.setSource(&level);
    outputPan.pan.setSource(target(BandTarget::Pan));
    drivePan.level.setSource(target(BandTarget::Drive));
    drivePan.pan.setSource(target(BandTarget::DrivePan));
}

SharedGraph::SharedGraph(ModulationMatrix& matrix, CinderParameters& tree, int numChannels)
    : matrix(matrix),
      tree(tree),
      isStereo(numChannels == 2),
      inputPeak(matrix.getEnvironment(), numChannels),
      sideChainPeak(matrix.getEnvironment(), numChannels),
      feedbackGate(matrix.getEnvironment(), gateAttackMs, gateThreshold),
      inputLevelPan(&matrix, numberOf(GlobalTarget::InputGain), numberOf(GlobalTarget::InputPan)),
      outputLevelPan(&matrix, numberOf(GlobalTarget::OutputGain),
                     numberOf(GlobalTarget::OutputPan)),
      inputLevelPanControl(&inputLevelPan),
      outputLevelPanControl(&outputLevelPan),
      distortionStyle(matrix.getEnvironment()),
      clipperStyle(matrix.getEnvironment()),
      qualityGain(matrix.getEnvironment(), 1.0f),
      midSideEncoder(matrix.getEnvironment()),
      wetDecoder(matrix.getEnvironment()),
      dryDecoder(matrix.getEnvironment()) {
    inputPeak.operation.assign(Mixer::Operation::Peak);
    sideChainPeak.operation.assign(Mixer::Operation::Peak);
    feedbackGate.setInput(&inputPeak);
    distortionStyle.setFactor(1);
    clipperStyle.setFactor(1);
    qualityGain.parameter.minRampTime = qualityFadeMs;
    qualityGain.parameter.maxRampTime = qualityFadeMs;
    for (int band = 0; band < numBands; ++band)
        bands[static_cast<std::size_t>(band)] =
            std::make_unique<SharedBand>(matrix, *tree.bands.set(band), band, &inputPeak);
    for (int band = 1; band < numBands; ++band)
        bands[static_cast<std::size_t>(band)]->compander.hearWith(bands[0]->compander);
    midSideEncoder.conversion.assign(MidSideConverter::Conversion::Encode);
    wetDecoder.conversion.assign(MidSideConverter::Conversion::Decode);
    dryDecoder.conversion.assign(MidSideConverter::Conversion::Decode);
}

wave::Producer* SharedGraph::target(int band, BandTarget place) const {
    return matrix.getTargetController(bandTarget(band, place));
}

wave::Producer* SharedGraph::target(GlobalTarget place) const {
    return matrix.getTargetController(numberOf(place));
}

}  // namespace cinder
