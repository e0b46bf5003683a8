#pragma once

#include <array>
#include <cstdint>

#include "midi/AbstractMusicEventReceiver.h"
#include "midi/MidiMessageReceiver.h"

namespace cinder {

/// Turns messages into calls of a receiver: first of the slot for all channels, then of the
/// message's own channel.
/// Range   any four bytes; what is no channel message and no system reset has no effect
/// State   the bank last selected in each slot; controllers 0 and 32 set it and go no further
class MidiDecoder final : public MidiMessageReceiver {
public:
    explicit MidiDecoder(AbstractMusicEventReceiver* receiver) : receiver(receiver) {}

    void receiveMidiMessage(const MidiEvent& event) noexcept CINDER_REALTIME override;  ///< [audio]

private:
    void dispatch(int slot, const MidiEvent& event) noexcept CINDER_REALTIME;
    void dispatchController(int slot, AbstractChannelEventReceiver& target,
                            const MidiEvent& event) noexcept CINDER_REALTIME;

    std::array<std::int32_t, AbstractMusicEventReceiver::numSlots> banks{};
    AbstractMusicEventReceiver* const receiver;
};

}  // namespace cinder
