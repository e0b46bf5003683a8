#include "midi/DefaultChannelEventReceiver.h"

#include "params/AbstractPluginParameter.h"

namespace cinder {

void DefaultChannelEventReceiver::controller(int number, int value,
                                             float normalised) noexcept CINDER_REALTIME {
    processor->controllerSeen(number);
    const std::int32_t target = processor->getControllerMapping().targetOf(number);
    if (AbstractPluginParameter* const parameter = processor->getParameterOwner().parameter(target))
        parameter->setValue(parameter->denormalize(normalised), 0);
    AbstractChannelEventReceiver::controller(number, value, normalised);
}

void DefaultChannelEventReceiver::noteOff(int note, float velocity) noexcept CINDER_REALTIME {
    processor->noteOff(note, velocity);
    AbstractChannelEventReceiver::noteOff(note, velocity);
}

void DefaultChannelEventReceiver::noteOn(int note, float velocity) noexcept CINDER_REALTIME {
    processor->noteOn(note, velocity);
    AbstractChannelEventReceiver::noteOn(note, velocity);
}

void DefaultChannelEventReceiver::programChange(int bank, int program) noexcept CINDER_REALTIME {
    processor->programChanged(bank, program);
}

}  // namespace cinder
