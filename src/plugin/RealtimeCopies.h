#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "analysis/AudioSourceProxy.h"
#include "analysis/LevelSourceProxy.h"
#include "analysis/SpectrumSourceProxy.h"
#include "midi/MidiMessageReceiver.h"
#include "params/GenericPluginBase.h"

namespace cinder {

/// What the interface sees of the processing: copies of its sources, and the MIDI events that
/// passed. They are filled by a transfer and read under the listener's lock.
/// State   the copies; the MIDI events of a product that keeps them wait until they are taken, the
///         newest 1024 of them
/// Errors  a stream that ends early fills what it has
class RealtimeCopies {
public:
    RealtimeCopies(const GenericPluginBase::RealtimeCounts& counts, int numChannels,
                   bool keepsMidiEvents);

    /// The counterpart of the processor's `writeRealtimeData`. Whether the stream is good.
    bool read(BinaryDataReader& reader);
    void setSampleRate(float rate);
    /// The MIDI events of the next transfer are dropped: they are from before the window opened.
    void discardMidiEvents() { dropMidiEvents = true; }
    std::optional<MidiEvent> takeMidiEvent();

    AudioSourceProxy& audio(int index) { return *buffers.at(static_cast<std::size_t>(index)); }
    LevelSourceProxy& level(int index) { return levels.at(static_cast<std::size_t>(index)); }
    SpectrumSourceProxy& spectrum(int index) { return spectra.at(static_cast<std::size_t>(index)); }
    int audioCount() const { return static_cast<int>(buffers.size()); }
    int levelCount() const { return static_cast<int>(levels.size()); }
    int spectrumCount() const { return static_cast<int>(spectra.size()); }

private:
    void readMidiEvents(BinaryDataReader& reader);

    std::vector<std::unique_ptr<AudioSourceProxy>> buffers;
    std::vector<LevelSourceProxy> levels;
    std::vector<SpectrumSourceProxy> spectra;
    const bool keepsMidiEvents;
    std::deque<MidiEvent> midiEvents;
    bool dropMidiEvents = false;
};

}  // namespace cinder
