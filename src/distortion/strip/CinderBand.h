#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "distortion/strip/FeedbackController.h"
#include "distortion/strip/FreqToDelayConverter.h"
#include "distortion/styles/DistortionProcessor.h"
#include "distortion/tone/CabinetProcessor.h"
#include "dsp/sr/IIRPhaseCompensator.h"
#include "dsp/stages/DelayLine.h"
#include "dsp/stages/EffectMixer.h"
#include "dsp/stages/Mixer.h"
#include "dsp/stages/Router.h"
#include "dsp/stages/StaticMixer.h"
#include "dsp/stages/VolumeFilter.h"
#include "wave/Forwarders.h"

namespace cinder {

/// What steers a band in one channel, as producers of blocks; not owned.
struct BandControls {
    wave::Producer* inputGain;             // linear
    wave::Producer* dynamicsGain;          // linear
    wave::Producer* drive;                 // 0..1
    std::array<wave::Producer*, 4> tones;  // dB: bass, mid, treble, presence
    wave::Producer* mix;                   // -1 dry .. 1 wet
    wave::Producer* level;                 // linear
    wave::Producer* feedbackAmount;        // 0..1
    wave::Producer* feedbackFrequency;     // log2 of Hz
    wave::Producer* feedbackGate;          // 0..1
};

/// All that happens to one band of one channel between the split and the sum:
///
///   in -+- x input gain -(+)- x dynamics - distortion - cabinet -+- mix - x level - on/off - out
///       |                 |                                      |    |              |
///       |                 +--- x amount --- delay --- x -1 ------+    |              |
///       +- phase compensation - x input gain -------------------------+              |
///       +----------------------------------------------------------------------------+
///
/// Shape   one channel, or two that are linked and share their filters and the work of their
///         converters. The loop's delay writes at the end of a cycle, so a block must be no longer
///         than the loop
/// State   that of the stages. A band that nobody pulls still runs while its delay is active
class CinderBand final : public wave::FilterBase {
public:
    /// Both styles and all that `controls` points to live longer.
    CinderBand(sr::IIRConverterStyle* converterStyle, const Capacitor::Style* capacitorStyle,
               const BandControls& controls, std::optional<std::uint32_t> noiseSeed = {});

    /// Lets the band of another channel share this one's filters. Before audio runs.
    void link(CinderBand& other);

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    DistortionProcessor& getDistortion() { return distortion; }
    CabinetProcessor& getCabinet() { return cabinet; }
    /// The band's input with the delay and the phase of the wet path.
    wave::Producer& getDry() { return phaseCompensator; }
    /// 0: off, the input is handed on as it is.
    Property<int>& enabled() { return router.selection; }
    Property<bool>& autoMute() { return feedbackController.autoMute; }
    /// What the converters take of the loop's time, in samples.
    Property<int>& loopCompensation() { return freqToDelay.compensation; }
    /// What the converters have heard at another factor counts no longer. [audio]
    void resetConverters() noexcept CINDER_REALTIME {
        distortion.resetConverters();
        phaseCompensator.reset();
    }
    /// An inactive loop is no load; one that comes back starts empty. [audio]
    void setLoopActive(bool active) noexcept CINDER_REALTIME { feedbackDelay.setActive(active); }
    bool isLoopActive() const noexcept CINDER_REALTIME { return feedbackDelay.isActive(); }

private:
    CabinetProcessor cabinet;
    sr::IIRPhaseCompensator phaseCompensator;
    DelayLine feedbackDelay;
    FreqToDelayConverter freqToDelay;
    FeedbackController feedbackController;
    StaticMixer feedbackMixer;
    Mixer mixer;
    wave::InputForwarder inputForwarder;
    Router router;
    DistortionProcessor distortion;
    VolumeFilter dynamicsFilter, levelFilter, dryFilter;
    EffectMixer effectMixer;
};

}  // namespace cinder
