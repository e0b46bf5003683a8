#pragma once

#include <array>
#include <memory>
#include <optional>

#include "distortion/drive/SoftClipper.h"
#include "distortion/strip/CinderBand.h"
#include "dsp/filters/crossover/MultiBand.h"
#include "dsp/sr/IIRPhaseCompensator.h"
#include "processor/SharedGraph.h"
#include "processor/frame/Channel.h"

namespace cinder {

/// One channel of the graph:
///
///   input - (mid/side) - split -+- band 1 -+- wet sum - x output - (left/right) - clip -+
///                               +-  ...    |                                            | mix -+
///                               +- band 6 -+- dry sum - (left/right) - phase -----------+      |
///                                                                                   x quality  |
///   input ------------------------------------------------------------------------- audition - out
///   side chain --------------------------------------------------------------------------+
///
/// What stands in brackets is there for two channels, and switched by the channel mode.
class CinderChannel final : public GenericPluginProcessor::Channel {
public:
    static constexpr int numBands = SharedGraph::numBands;

    /// Shares its filters with `first`, a channel made before, or null. Each band's noise has a
    /// seed of its own, from `noiseSeed` on.
    CinderChannel(GenericPluginProcessor* owner, SharedGraph& shared, CinderChannel* first,
                  std::optional<std::uint32_t> noiseSeed);

    CinderBand& band(int index) { return *bands[static_cast<std::size_t>(index)]; }
    /// Brings a band in or out of the sums, on ramps. The loop of one that goes runs on. [audio]
    void setBand(int index, bool active, bool audible) noexcept CINDER_REALTIME;
    /// Whether the loop of a band that has gone is at its end, which is when nobody hears the band
    /// any more. [audio]
    bool endLoop(int index) noexcept CINDER_REALTIME;
    /// What the converters have heard at another factor counts no longer. [audio]
    void resetConverters() noexcept CINDER_REALTIME;

private:
    void addModeRouter(Router& router, wave::Producer* direct, wave::Producer* converted);
    void wireBands(std::optional<std::uint32_t> noiseSeed);
    void wireOutput();
    BandControls controlsOf(int index);

    SharedGraph& shared;
    Router inputModeRouter, wetModeRouter, dryModeRouter;
    MultiBand multiBand;
    Mixer dryMixer, wetMixer;
    std::array<std::unique_ptr<CinderBand>, numBands> bands;
    VolumeFilter outputFilter;
    SoftClipper softClipper;
    sr::IIRPhaseCompensator phaseCompensator;
    EffectMixer effectMixer;
    VolumeFilter qualityFilter;
    Router auditionRouter;
};

}  // namespace cinder
