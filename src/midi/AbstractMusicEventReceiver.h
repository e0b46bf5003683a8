#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/Property.h"
#include "core/Realtime.h"
#include "midi/AbstractChannelEventReceiver.h"

namespace cinder {

/// Sees every message before it is decoded.
class RawMidiListener {
public:
    virtual void rawMessage(std::uint8_t status, std::uint8_t data1,
                            std::uint8_t data2) noexcept CINDER_REALTIME = 0;

protected:
    ~RawMidiListener() = default;
};

class SystemResetListener {
public:
    virtual void systemReset() noexcept CINDER_REALTIME = 0;

protected:
    ~SystemResetListener() = default;
};

/// Where a decoder delivers: one slot for all channels, and one for each of the 16.
class AbstractMusicEventReceiver {
public:
    static constexpr int numSlots = 17;
    static constexpr int allChannels = 0;  ///< the slot that hears every channel

    AbstractMusicEventReceiver() = default;
    virtual ~AbstractMusicEventReceiver() = default;
    AbstractMusicEventReceiver(const AbstractMusicEventReceiver&) = delete;
    AbstractMusicEventReceiver& operator=(const AbstractMusicEventReceiver&) = delete;

    Property<AbstractChannelEventReceiver*>& slot(int index) {
        return slots[static_cast<std::size_t>(index)];
    }

    Property<RawMidiListener*> rawListener{nullptr};
    Property<SystemResetListener*> resetListener{nullptr};

private:
    std::array<Property<AbstractChannelEventReceiver*>, numSlots> slots;
};

}  // namespace cinder
