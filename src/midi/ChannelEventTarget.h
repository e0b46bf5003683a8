#pragma once

#include "core/Realtime.h"
#include "midi/ControllerMapping.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

/// What MIDI acts on: the processor, as the receivers see it. [audio]
class ChannelEventTarget {
public:
    virtual void noteOff(int note, float velocity) noexcept CINDER_REALTIME = 0;
    virtual void noteOn(int note, float velocity) noexcept CINDER_REALTIME = 0;
    /// A controller has come in, whether or not it moves a parameter.
    virtual void controllerSeen(int number) noexcept CINDER_REALTIME = 0;
    virtual void programChanged(int bank, int program) noexcept CINDER_REALTIME = 0;
    virtual const ControllerMapping& getControllerMapping() const noexcept CINDER_REALTIME = 0;
    virtual GenericParameterOwner& getParameterOwner() noexcept CINDER_REALTIME = 0;

protected:
    ~ChannelEventTarget() = default;
};

}  // namespace cinder
