#pragma once

#include <array>
#include <vector>

#include "midi/MidiListener.h"
#include "modulation/sources/midi/MidiModSource.h"

namespace cinder {

/// Remembers the last value of every MIDI input, so that a source that is switched to another input
/// finds it, and tells the sources that follow.
/// Range   index 0..127 a controller, from 128 on the inputs in the order of MidiInput; what is not
///         a number counts as 0, and a controller number beyond is ignored
/// State   the values and the followers; no reset clears them. Notes do not decay
class MidiModSource::Cache final : public MidiListener {
public:
    static constexpr int numControllers = 128;
    static constexpr int numValues = numControllers + static_cast<int>(MidiInput::Controller);

    static constexpr int indexOf(MidiInput input) {
        return numControllers + static_cast<int>(input);
    }

    void channelPressure(float pressure) noexcept CINDER_REALTIME override;
    void polyPressure(int note, float pressure) noexcept CINDER_REALTIME override;
    void controller(int number, int value, float normalised) noexcept CINDER_REALTIME override;
    void modulationWheel(float normalised) noexcept CINDER_REALTIME override;
    void noteOff(int, float) noexcept CINDER_REALTIME override {}
    void noteOn(int note, float velocity) noexcept CINDER_REALTIME override;
    void pitchBend(float bend) noexcept CINDER_REALTIME override;

    /// 0 for a number that is no input's. [audio]
    float valueAt(int index) const noexcept CINDER_REALTIME {
        return index >= 0 && index < numValues ? values[static_cast<std::size_t>(index)] : 0.0f;
    }

    void addFollower(MidiModSource* source) { followers.push_back(source); }
    void removeFollower(MidiModSource* source) { std::erase(followers, source); }

private:
    void store(int index, float value) noexcept CINDER_REALTIME;

    std::array<float, numValues> values{};
    std::vector<MidiModSource*> followers;  // not owned
};

}  // namespace cinder
