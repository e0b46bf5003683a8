#include "midi/MidiDecoder.h"

#include <cstddef>

namespace cinder {

namespace {

constexpr int firstStatus = 0x80;
constexpr int firstSystemStatus = 0xf0;
constexpr int systemReset = 0xff;

constexpr int bankSelectCoarse = 0;
constexpr int bankSelectFine = 32;
constexpr int allNotesOff = 123;

float normalised(std::uint8_t data) {
    return static_cast<float>(data) * 0.007874016f;  // 1 / 127
}

/// 14 bits, the coarse seven behind the fine seven; the middle, 0x2000, is about 0.00003.
float bendOf(const MidiEvent& event) {
    const int bits = event.data2 * 128 + event.data1;
    return static_cast<float>(bits) * 6.103888e-05f - 0.5f;  // 1 / 16383
}

}  // namespace

void MidiDecoder::receiveMidiMessage(const MidiEvent& event) noexcept CINDER_REALTIME {
    if (RawMidiListener* const raw = receiver->rawListener)
        raw->rawMessage(event.status, event.data1, event.data2);
    if (event.status < firstStatus) return;
    if (event.status < firstSystemStatus) {
        dispatch(AbstractMusicEventReceiver::allChannels, event);
        dispatch((event.status & 15) + 1, event);
    } else if (event.status == systemReset) {
        if (SystemResetListener* const listener = receiver->resetListener) listener->systemReset();
    }
}

void MidiDecoder::dispatch(int slot, const MidiEvent& event) noexcept CINDER_REALTIME {
    AbstractChannelEventReceiver* const target = receiver->slot(slot);
    if (!target) return;
    switch (event.status & 0xf0) {
        case 0x80:
            target->noteOff(event.data1, normalised(event.data2));
            break;
        case 0x90:
            if (event.data2 > 0)
                target->noteOn(event.data1, normalised(event.data2));
            else
                target->noteOff(event.data1, 0.0f);
            break;
        case 0xa0:
            target->polyPressure(event.data1, normalised(event.data2));
            break;
        case 0xb0:
            dispatchController(slot, *target, event);
            break;
        case 0xc0:
            target->programChange(banks[static_cast<std::size_t>(slot)], event.data1);
            break;
        case 0xd0:
            target->channelPressure(normalised(event.data1));
            break;
        case 0xe0:
            target->pitchBend(bendOf(event));
            break;
        default:
            break;
    }
}

void MidiDecoder::dispatchController(int slot, AbstractChannelEventReceiver& target,
                                     const MidiEvent& event) noexcept CINDER_REALTIME {
    std::int32_t& bank = banks[static_cast<std::size_t>(slot)];
    switch (event.data1) {
        case bankSelectCoarse:
            bank = event.data2 * 128 + (bank & 0x7f);
            break;
        case bankSelectFine:
            bank = event.data2 + (bank & 0x3f80);
            break;
        case allNotesOff:
            target.noteOff(0, 0.0f);
            break;
        default:
            target.controller(event.data1, event.data2, normalised(event.data2));
            break;
    }
}

}  // namespace cinder
