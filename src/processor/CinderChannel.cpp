#include "processor/CinderChannel.h"

#include "params/PropPluginParameter.h"
#include "processor/SharedTables.h"

namespace cinder {

namespace {

constexpr float loudestGain = 63.095734f;  // 36 dB

PropPluginParameter<int>& choice(CinderParameters& tree, GlobalChoiceParameter row) {
    return dynamic_cast<PropPluginParameter<int>&>(tree[row]);
}

}  // namespace

CinderChannel::CinderChannel(GenericPluginProcessor* owner, SharedGraph& shared,
                             CinderChannel* first, std::optional<std::uint32_t> noiseSeed)
    : Channel(owner),
      shared(shared),
      inputModeRouter(owner->getEnvironment(), 2),
      wetModeRouter(owner->getEnvironment(), 2),
      dryModeRouter(owner->getEnvironment(), 2),
      multiBand(owner->getEnvironment(), &shared.bandModel),
      dryMixer(owner->getEnvironment(), numBands),
      wetMixer(owner->getEnvironment(), numBands),
      outputFilter(owner->getEnvironment(), 0.0f, loudestGain),
      softClipper(owner->getEnvironment(), &shared.clipperStyle),
      phaseCompensator(&shared.clipperStyle),
      effectMixer(owner->getEnvironment(), &phaseCompensator, &softClipper),
      qualityFilter(owner->getEnvironment()),
      auditionRouter(owner->getEnvironment(), 3) {
    shared.inputPeak.connect(index, &input);
    shared.sideChainPeak.connect(index, &rawSideChainInput);
    wireBands(noiseSeed);
    wireOutput();
    if (!first) return;
    multiBand.link(first->multiBand);
    for (int i = 0; i < numBands; ++i)
        band(i).link(first->band(i));
    softClipper.setPartner(&first->softClipper);
    softClipper.link();
}

void CinderChannel::addModeRouter(Router& router, wave::Producer* direct,
                                  wave::Producer* converted) {
    router.connect(0, direct);
    router.connect(1, converted);
    choice(shared.tree, GlobalChoiceParameter::ChannelMode).addProperty(&router.selection);
}

void CinderChannel::wireBands(std::optional<std::uint32_t> noiseSeed) {
    multiBand.setInput(&input);
    if (shared.isStereo) {
        shared.midSideEncoder.setInput(index, &input);
        addModeRouter(inputModeRouter, &input, shared.midSideEncoder.getOutput(index));
        multiBand.setInput(&inputModeRouter);
    }
    for (int i = 0; i < MultiBand::maxCrossovers; ++i)
        multiBand.getCrossover(i).frequency.setSource(
            shared.target(i, BandTarget::CrossoverFrequency));
    for (int i = 0; i < numBands; ++i) {
        auto& made = bands[static_cast<std::size_t>(i)];
        made = std::make_unique<CinderBand>(
            &shared.distortionStyle, &SharedTables::get().capacitorStyle, controlsOf(i), noiseSeed);
        if (noiseSeed) ++*noiseSeed;
        made->setInput(multiBand.getOutput(i));
        dryMixer.connect(i, &made->getDry());
        wetMixer.connect(i, made.get());
        BandParameterSet& parameters = *shared.tree.bands.set(i);
        parameters.as<PropPluginParameter<int>>(BandParameter::Enabled)
            .addProperty(&made->enabled());
        dynamic_cast<PropPluginParameter<bool>&>(
            shared.tree[GlobalChoiceParameter::AutoMuteFeedback])
            .addProperty(&made->autoMute());
    }
}

BandControls CinderChannel::controlsOf(int i) {
    SharedBand& band = *shared.bands[static_cast<std::size_t>(i)];
    const auto target = [&](BandTarget place) { return shared.target(i, place); };
    BandControls controls = {};
    controls.inputGain = shared.target(GlobalTarget::InputGain);
    controls.drive = target(BandTarget::Drive);
    controls.level = &band.level;
    if (shared.isStereo) {
        controls.inputGain = shared.inputLevelPanControl.getOutput(index);
        controls.drive = band.drivePan.getOutput(index);
        controls.level = band.outputPan.getOutput(index);
    }
    controls.dynamicsGain = &band.compander;
    controls.tones = {target(BandTarget::Bass), target(BandTarget::Mid), target(BandTarget::Treble),
                      target(BandTarget::Presence)};
    controls.mix = target(BandTarget::Mix);
    controls.feedbackAmount = target(BandTarget::FeedbackAmount);
    controls.feedbackFrequency = target(BandTarget::FeedbackFrequency);
    controls.feedbackGate = &shared.feedbackGate;
    return controls;
}

void CinderChannel::wireOutput() {
    outputFilter.setInput(&wetMixer);
    outputFilter.level.setSource(shared.isStereo ? shared.outputLevelPanControl.getOutput(index)
                                                 : shared.target(GlobalTarget::OutputGain));
    softClipper.setInput(&outputFilter);
    phaseCompensator.setInput(&dryMixer);
    if (shared.isStereo) {
        shared.wetDecoder.setInput(index, &outputFilter);
        addModeRouter(wetModeRouter, &outputFilter, shared.wetDecoder.getOutput(index));
        softClipper.setInput(&wetModeRouter);
        shared.dryDecoder.setInput(index, &dryMixer);
        addModeRouter(dryModeRouter, &dryMixer, shared.dryDecoder.getOutput(index));
        phaseCompensator.setInput(&dryModeRouter);
    }
    effectMixer.mix.setSource(shared.target(GlobalTarget::Mix));
    effectMixer.panningLaw.assign(EffectMixer::PanningLaw::Linear);
    qualityFilter.setInput(&effectMixer);
    qualityFilter.level.setSource(&shared.qualityGain);
    auditionRouter.connect(0, &qualityFilter);
    auditionRouter.connect(1, &input);
    auditionRouter.connect(2, &rawSideChainInput);
    choice(shared.tree, GlobalChoiceParameter::AuditionSignal)
        .addProperty(&auditionRouter.selection);
    output = &auditionRouter;
}

void CinderChannel::setBand(int i, bool active, bool audible) noexcept CINDER_REALTIME {
    if (active) band(i).setLoopActive(true);
    dryMixer.input(i).gain.assign(active ? 1.0f : 0.0f);
    wetMixer.input(i).gain.assign(active && audible ? 1.0f : 0.0f);
}

bool CinderChannel::endLoop(int i) noexcept CINDER_REALTIME {
    if (wetMixer.input(i).gain.getParameter().isRamping()) return false;
    band(i).setLoopActive(false);
    return true;
}

void CinderChannel::resetConverters() noexcept CINDER_REALTIME {
    for (const auto& made : bands)
        made->resetConverters();
    softClipper.reset();
    phaseCompensator.reset();
}

}  // namespace cinder
