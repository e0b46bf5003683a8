#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/EventForwarderList.h"
#include "params/ChannelLayouts.h"
#include "params/GenericParameterResponder.h"

namespace cinder {

/// What the two halves of an instance have in common: the layout, what the product offers, the
/// list of parameters and the names of their groups.
/// State   set up by the product's constructor, constant from then on
class GenericPluginBase : public GenericParameterResponder {
public:
    /// Bits of `features`.
    enum Feature : std::uint32_t {
        offersMono = 0x02,
        offersSurround = 0x04,
        hasSideChain = 0x08,
        offersMonoToStereo = 0x10,
        isNamedAfterTrack = 0x20,
        keepsMidiQueue = 0x40,  ///< the processor keeps MIDI events for the interface
        hasOneStateChunk = 0x80,
    };

    /// Whether MIDI from the host gets through.
    enum class MidiState : std::int32_t { Enabled = 0, Disabled = 1 };

    /// How many sources of real-time data the product offers to the interface.
    struct RealtimeCounts {
        std::int32_t audioSources = 0;
        std::int32_t levelSourcesPerChannel = 0;
        std::int32_t globalLevelSources = 0;
        std::int32_t spectrumSources = 0;
    };

    int parameterCount() const override;
    AbstractPluginParameter* parameter(int id) const override;
    int addParameter(AbstractPluginParameter* parameter) override;
    /// Groups of one name are one group; group 0 is the one without a name.
    int addGroup(const std::string& name) override;
    int group() const override { return 0; }
    /// Empty for an id without a group.
    std::string groupName(int id) const;
    int groupCount() const { return static_cast<int>(groupNames.size()); }
    /// The parameter whose value is a `MidiState`; null: MIDI always gets through. Before audio
    /// runs.
    void setMidiStateParameter(AbstractPluginParameter* parameter) {
        midiStateParameter = parameter;
    }
    AbstractPluginParameter* getMidiStateParameter() const { return midiStateParameter; }

    std::int32_t getChannelLayout() const { return channelLayout; }
    std::int32_t getChannelCount() const { return channelCountOf(channelLayout); }
    std::uint32_t getFeatures() const { return features; }
    bool isSideChainEnabled() const { return sideChainEnabled; }
    const RealtimeCounts& getRealtimeCounts() const { return realtimeCounts; }

protected:
    /// `parameterList` belongs to the derived class and may be constructed after this base.
    GenericPluginBase(std::int32_t channelLayout, std::uint32_t features,
                      std::vector<AbstractPluginParameter*>* parameterList)
        : channelLayout(channelLayout), features(features), parameterList(parameterList) {}

    const std::int32_t channelLayout;
    std::uint32_t features;
    AbstractPluginParameter* midiStateParameter = nullptr;  // a value that rounds to 0: enabled
    AbstractPluginParameter* bypassParameter = nullptr;
    bool sideChainEnabled = true;
    RealtimeCounts realtimeCounts;
    EventForwarderList forwarders;

private:
    std::vector<AbstractPluginParameter*>* const parameterList;
    std::vector<std::string> groupNames{std::string()};  // by id
};

}  // namespace cinder
