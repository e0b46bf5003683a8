#pragma once

#include <cstdint>

#include "processor/frame/GenericPluginProcessor.h"
#include "wave/Input.h"

namespace cinder {

/// One channel of the layout: its inputs, and the end of its graph. A product derives from it what
/// it has once a channel.
class GenericPluginProcessor::Channel {
public:
    /// The side chain of a product that listens to one: silence unless one is really connected.
    class ConnectedSideChainInput final : public wave::Input {
    public:
        explicit ConnectedSideChainInput(const GenericPluginProcessor* owner)
            : wave::Input(owner->getEnvironment()), owner(owner) {}

        void render(wave::BasicBlock<float>* block, int numSamples,
                    unsigned flags) noexcept CINDER_REALTIME override;

    private:
        const GenericPluginProcessor* const owner;
    };

    /// The index is that of the next channel of the owner.
    explicit Channel(GenericPluginProcessor* owner);
    virtual ~Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    virtual void parameterChanged(int index) noexcept CINDER_REALTIME;
    virtual void sampleRateChanged() {}

    const std::int32_t index;
    const std::uint32_t channelId;  // the speaker's code
    ConnectedSideChainInput sideChainInput;
    wave::Input input;
    /// The side chain, or the main input where there is none: what a listener wants to hear.
    wave::Input rawSideChainInput;
    wave::Producer* output = nullptr;  // not owned; null is silence

protected:
    GenericPluginProcessor* const owner;
};

}  // namespace cinder
