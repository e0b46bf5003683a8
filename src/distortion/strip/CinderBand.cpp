#include "distortion/strip/CinderBand.h"

namespace cinder {

namespace {

constexpr float loudestGain = 63.095734f;  // 36 dB
constexpr float slowestLoopMs = 100.0f;    // 10 Hz

// Inputs of the mixer and of the router.
constexpr int directInput = 0, loopInput = 1;
constexpr int bypassInput = 0, stripInput = 1;

}  // namespace

CinderBand::CinderBand(sr::IIRConverterStyle* converterStyle,
                       const Capacitor::Style* capacitorStyle, const BandControls& controls,
                       std::optional<std::uint32_t> noiseSeed)
    : FilterBase(converterStyle->getEnvironment(), true),
      cabinet(environment),
      phaseCompensator(converterStyle),
      feedbackDelay(environment),
      freqToDelay(environment),
      feedbackController(environment, controls.feedbackGate),
      feedbackMixer(environment, {{-1.0f, &cabinet}}),
      mixer(environment, 2),
      inputForwarder(environment, this),
      router(environment, 2),
      distortion(converterStyle, capacitorStyle, noiseSeed),
      dynamicsFilter(environment),
      levelFilter(environment),
      dryFilter(environment, 0.0f, loudestGain),
      effectMixer(environment, &dryFilter, &cabinet) {
    mixer.connect(directInput, &inputForwarder);
    mixer.input(directInput).gain.setSource(controls.inputGain);
    mixer.connect(loopInput, &feedbackDelay);
    mixer.input(loopInput).gain.setSource(&feedbackController);

    dynamicsFilter.setInput(&mixer);
    dynamicsFilter.level.setSource(controls.dynamicsGain);
    distortion.setInput(&dynamicsFilter);
    distortion.drive.setSource(controls.drive);
    for (int i = 0; i < DistortionProcessor::numTones; ++i)
        distortion.toneGain(i).setSource(controls.tones[static_cast<std::size_t>(i)]);
    cabinet.setInput(&distortion);

    phaseCompensator.setInput(&inputForwarder);
    dryFilter.setInput(&phaseCompensator);
    dryFilter.level.setSource(controls.inputGain);
    effectMixer.mix.setSource(controls.mix);
    effectMixer.panningLaw.assign(EffectMixer::PanningLaw::Linear);
    levelFilter.setInput(&effectMixer);
    levelFilter.level.setSource(controls.level);
    router.connect(bypassInput, &inputForwarder);
    router.connect(stripInput, &levelFilter);

    feedbackController.setInput(controls.feedbackAmount);
    freqToDelay.setInput(controls.feedbackFrequency);
    feedbackDelay.setMaxDelayMs(slowestLoopMs);
    feedbackDelay.setFeedbackMode(true);
    feedbackDelay.smoothing.assign(false);
    feedbackDelay.delayTime.setSource(&freqToDelay);
    feedbackDelay.setInput(&feedbackMixer);
}

void CinderBand::link(CinderBand& other) {
    distortion.link(other.distortion);
    cabinet.link(other.cabinet);
}

void CinderBand::render(wave::BasicBlock<float>*, int numSamples,
                        unsigned) noexcept CINDER_REALTIME {
    passOn(router.pull(numSamples));
    status = router.getStatus();
}

}  // namespace cinder
