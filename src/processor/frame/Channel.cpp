#include "processor/frame/Channel.h"

#include "params/ChannelLayouts.h"

namespace cinder {

GenericPluginProcessor::Channel::Channel(GenericPluginProcessor* owner)
    : index(static_cast<std::int32_t>(owner->channels.size())),
      channelId(speakerCodeOf(owner->channelLayout, index)),
      sideChainInput(owner),
      input(owner->getEnvironment()),
      rawSideChainInput(owner->getEnvironment()),
      owner(owner) {}

void GenericPluginProcessor::Channel::parameterChanged(int) noexcept CINDER_REALTIME {}

void GenericPluginProcessor::Channel::ConnectedSideChainInput::render(
    wave::BasicBlock<float>* block, int numSamples, unsigned flags) noexcept CINDER_REALTIME {
    const bool isConnected =
        (owner->features & hasSideChain) && owner->sideChainEnabled && owner->sideChainConnected;
    setConstant(!isConnected);
    if (isConnected)
        wave::Input::render(block, numSamples, flags);
    else
        passOn(environment->getZeroBlock());
}

}  // namespace cinder
