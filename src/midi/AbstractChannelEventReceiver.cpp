#include "midi/AbstractChannelEventReceiver.h"

namespace cinder {

namespace {
constexpr int modulationWheelController = 1;
}

void AbstractChannelEventReceiver::channelPressure(float value) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners)
        listener->channelPressure(value);
}

void AbstractChannelEventReceiver::polyPressure(int note, float value) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners)
        listener->polyPressure(note, value);
}

void AbstractChannelEventReceiver::controller(int number, int value,
                                              float normalised) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners) {
        listener->controller(number, value, normalised);
        if (number == modulationWheelController) listener->modulationWheel(normalised);
    }
}

void AbstractChannelEventReceiver::noteOff(int note, float velocity) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners)
        listener->noteOff(note, velocity);
}

void AbstractChannelEventReceiver::noteOn(int note, float velocity) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners)
        listener->noteOn(note, velocity);
}

void AbstractChannelEventReceiver::pitchBend(float value) noexcept CINDER_REALTIME {
    for (MidiListener* listener : listeners)
        listener->pitchBend(value);
}

void AbstractChannelEventReceiver::programChange(int, int) noexcept CINDER_REALTIME {}

}  // namespace cinder
