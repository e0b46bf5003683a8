#include "modulation/sources/midi/MidiModSourceCache.h"

#include <cmath>

namespace cinder {

void MidiModSource::Cache::channelPressure(float pressure) noexcept CINDER_REALTIME {
    store(indexOf(MidiInput::Aftertouch), pressure);
}

void MidiModSource::Cache::polyPressure(int, float pressure) noexcept CINDER_REALTIME {
    store(indexOf(MidiInput::Aftertouch), pressure);
}

void MidiModSource::Cache::controller(int number, int, float normalised) noexcept CINDER_REALTIME {
    if (number >= 0 && number < numControllers) store(number, normalised);
}

void MidiModSource::Cache::modulationWheel(float normalised) noexcept CINDER_REALTIME {
    store(indexOf(MidiInput::ModWheel), normalised);
}

void MidiModSource::Cache::noteOn(int note, float velocity) noexcept CINDER_REALTIME {
    store(indexOf(MidiInput::Velocity), velocity);
    store(indexOf(MidiInput::KeyboardTrack), static_cast<float>(note));
}

void MidiModSource::Cache::pitchBend(float bend) noexcept CINDER_REALTIME {
    store(indexOf(MidiInput::PitchBend), bend);
}

void MidiModSource::Cache::store(int index, float value) noexcept CINDER_REALTIME {
    if (!std::isfinite(value)) value = 0.0f;
    values[static_cast<std::size_t>(index)] = value;
    for (MidiModSource* const follower : followers)
        follower->update(index, value);
}

}  // namespace cinder
