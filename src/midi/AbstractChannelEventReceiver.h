#pragma once

#include <vector>

#include "core/Realtime.h"
#include "midi/MidiListener.h"

namespace cinder {

/// Takes the decoded messages of the channels it stands for, and forwards them to its listeners.
/// State   the listeners, not owned; added before audio runs
class AbstractChannelEventReceiver {
public:
    AbstractChannelEventReceiver() = default;
    virtual ~AbstractChannelEventReceiver() = default;
    AbstractChannelEventReceiver(const AbstractChannelEventReceiver&) = delete;
    AbstractChannelEventReceiver& operator=(const AbstractChannelEventReceiver&) = delete;

    virtual void reset() noexcept CINDER_REALTIME {}
    virtual void channelPressure(float value) noexcept CINDER_REALTIME;
    virtual void polyPressure(int note, float value) noexcept CINDER_REALTIME;
    virtual void controller(int number, int value, float normalised) noexcept CINDER_REALTIME;
    virtual void noteOff(int note, float velocity) noexcept CINDER_REALTIME;
    virtual void noteOn(int note, float velocity) noexcept CINDER_REALTIME;
    virtual void pitchBend(float value) noexcept CINDER_REALTIME;
    virtual void programChange(int bank, int program) noexcept CINDER_REALTIME;

    void addListener(MidiListener* listener) { listeners.push_back(listener); }

private:
    std::vector<MidiListener*> listeners;
};

}  // namespace cinder
