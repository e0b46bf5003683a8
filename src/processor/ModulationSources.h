#pragma once

#include <memory>
#include <vector>

#include "dsp/stages/Router.h"
#include "modulation/matrix/ModulationMatrix.h"
#include "modulation/sources/envelopes/EnvelopeFollower.h"
#include "modulation/sources/envelopes/EnvelopeGenerator.h"
#include "modulation/sources/midi/MidiModSourceCache.h"
#include "modulation/sources/xlfo/XLFOFreqController.h"
#include "params/PropPluginParameter.h"
#include "params/tree/CinderParameters.h"

namespace cinder {

/// All the sources of the modulation, with their ways into the matrix, and the parameters' ways to
/// them.
/// State   that of the sources, and how many keys are down
class ModulationSources {
public:
    /// What envelopes listen to: levels across the channels. Not owned.
    struct Levels {
        wave::Producer* input;
        wave::Producer* sideChain;
    };

    /// All of these live longer.
    ModulationSources(ModulationMatrix& matrix, CinderParameters& tree, Levels levels,
                      const EnvelopeCurves& curves);

    // From the processor. [audio]
    void setTempo(float tempo, float position) noexcept CINDER_REALTIME;
    /// Note 0 is no note: it says that no key is down.
    void noteOn(int note) noexcept CINDER_REALTIME;
    void noteOff() noexcept CINDER_REALTIME;
    void snapChanged(int xlfo) noexcept CINDER_REALTIME;
    void triggeringChanged(int eg) noexcept CINDER_REALTIME;

    /// The same seed, the same random steps. Before audio runs.
    void seedRandom(std::uint32_t seed);
    /// To be entered where MIDI arrives.
    MidiListener& getMidiListener() { return midiCache; }
    /// What a source is worth at present, 0..1. [any]
    float getSourceValue(int source) const;

private:
    struct XYAxis;
    struct Oscillator;
    struct Generator;
    struct Follower;
    struct Midi;
    template <typename Source>
    using List = std::vector<std::unique_ptr<Source>>;

    void addXYAxes(CinderParameters& tree);
    void addOscillators(CinderParameters& tree);
    void addGenerators(CinderParameters& tree, Levels levels, const EnvelopeCurves& curves);
    void addFollowers(CinderParameters& tree, Levels levels);
    void addMidiSources(CinderParameters& tree);

    ModulationMatrix& matrix;
    List<XYAxis> xyAxes;
    List<Oscillator> oscillators;
    List<Generator> generators;
    FollowerLevels followerLevels;
    List<Follower> followers;
    MidiModSource::Cache midiCache;
    List<Midi> midiSources;
    int heldNotes = 0;

public:
    ~ModulationSources();
};

}  // namespace cinder
