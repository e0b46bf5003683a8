#pragma once

#include "midi/AbstractChannelEventReceiver.h"
#include "midi/ChannelEventTarget.h"

namespace cinder {

/// Plays the processor: notes and program changes go to it, controllers move the parameters that
/// they are mapped to. The host and the other half hear of such a movement. Listeners come last.
class DefaultChannelEventReceiver final : public AbstractChannelEventReceiver {
public:
    explicit DefaultChannelEventReceiver(ChannelEventTarget* processor) : processor(processor) {}

    void controller(int number, int value, float normalised) noexcept CINDER_REALTIME override;
    void noteOff(int note, float velocity) noexcept CINDER_REALTIME override;
    void noteOn(int note, float velocity) noexcept CINDER_REALTIME override;
    void programChange(int bank, int program) noexcept CINDER_REALTIME override;

private:
    ChannelEventTarget* const processor;
};

}  // namespace cinder
