#pragma once

#include <cstdint>

#include "core/Realtime.h"

namespace cinder {

/// A channel message as it goes over the wire: the status, up to two data bytes, a spare one.
struct MidiEvent {
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    std::uint8_t spare = 0;

    bool operator==(const MidiEvent&) const = default;
};
static_assert(sizeof(MidiEvent) == 4);

class MidiMessageReceiver {
public:
    virtual ~MidiMessageReceiver() = default;
    virtual void receiveMidiMessage(const MidiEvent& event) noexcept CINDER_REALTIME = 0;
};

}  // namespace cinder
