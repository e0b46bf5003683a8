#pragma once

#include "modulation/slots/ModulationSlotParameterSetList.h"
#include "params/GenericPluginBase.h"
#include "params/tree/BandParameterSets.h"
#include "params/tree/GlobalRows.h"
#include "params/tree/SourceParameterSets.h"

namespace cinder {

/// The product's whole tree: 899 parameters whose ids, 0 to 898, never move. Each half of an
/// instance has a tree of its own, and the ids are all that links them.
///
/// Whoever adds a parameter adds a row to the table of its set. Ids are given in the order of the
/// members below, so a row in the middle would move all saved sounds: what comes later goes into
/// an extension, as BandParameterSetListExtension is one.
///
/// State   the parameters; from `initialize` on with ranges, defaults, units and hints
class CinderParameters {
public:
    static constexpr std::uint32_t features =
        GenericPluginBase::offersMono | GenericPluginBase::hasSideChain;

    /// Tells `owner` which parameter holds MIDI back, `matrix` its shape and its slots.
    CinderParameters(GenericPluginBase* owner, ModulationMatrixOwner* matrix);

    /// Once, behind the construction. [ui]
    void initialize();

    /// Of the whole plug-in, in samples, for the value of High Quality at hand.
    int latency(double sampleRate) const noexcept CINDER_REALTIME;

    AbstractPluginParameter& operator[](GlobalTargetParameter row) const {
        return globalTargets.at(static_cast<int>(row));
    }
    AbstractPluginParameter& operator[](GlobalChoiceParameter row) const {
        return globalChoices.at(static_cast<int>(row));
    }

private:
    ParameterRows globalTargets;

public:
    BandParameterSetList bands;
    XYParameterSetList xyControllers;
    XLFOParameterSetList xlfos;
    EGParameterSetList egs;
    EFParameterSetList efs;
    MidiSourceParameterSetList midiSources;

private:
    ParameterRows globalChoices;

public:
    ModulationSlotParameterSetList slots;
    BandParameterSetListExtension bandExtensions;
};

}  // namespace cinder
