#include "plugin/RealtimeCopies.h"

#include <istream>

namespace cinder {
namespace {

constexpr std::size_t mostMidiEvents = 1024;

}  // namespace

RealtimeCopies::RealtimeCopies(const GenericPluginBase::RealtimeCounts& counts, int numChannels,
                               bool keepsMidiEvents)
    : levels(static_cast<std::size_t>(counts.levelSourcesPerChannel * numChannels +
                                      counts.globalLevelSources)),
      spectra(static_cast<std::size_t>(counts.spectrumSources)),
      keepsMidiEvents(keepsMidiEvents) {
    for (std::int32_t i = 0; i < counts.audioSources; ++i)
        buffers.push_back(std::make_unique<AudioSourceProxy>());
}

bool RealtimeCopies::read(BinaryDataReader& reader) {
    for (const auto& buffer : buffers)
        buffer->read(reader);
    for (LevelSourceProxy& source : levels)
        source.read(reader);
    for (SpectrumSourceProxy& source : spectra)
        source.read(reader);
    if (keepsMidiEvents) readMidiEvents(reader);
    return reader.isGood();
}

/// Each event behind a 1, a 0 at the end.
void RealtimeCopies::readMidiEvents(BinaryDataReader& reader) {
    std::istream& stream = reader.getStream();
    while (stream.get() == 1) {
        MidiEvent event;
        event.status = static_cast<std::uint8_t>(stream.get());
        event.data1 = static_cast<std::uint8_t>(stream.get());
        event.data2 = static_cast<std::uint8_t>(stream.get());
        if (!reader.isGood()) return;
        if (dropMidiEvents) continue;
        if (midiEvents.size() == mostMidiEvents) midiEvents.pop_front();
        midiEvents.push_back(event);
    }
    dropMidiEvents = false;
}

void RealtimeCopies::setSampleRate(float rate) {
    for (const auto& buffer : buffers)
        buffer->setSampleRate(rate);
}

std::optional<MidiEvent> RealtimeCopies::takeMidiEvent() {
    if (midiEvents.empty()) return {};
    const MidiEvent event = midiEvents.front();
    midiEvents.pop_front();
    return event;
}

}  // namespace cinder
