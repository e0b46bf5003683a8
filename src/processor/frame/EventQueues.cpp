// MIDI on its way in, and what the interface fetches.
#include <cmath>
#include <ostream>

#include "params/AbstractPluginParameter.h"
#include "processor/frame/GenericPluginProcessor.h"

namespace cinder {

bool GenericPluginProcessor::isMidiBlocked() const noexcept CINDER_REALTIME {
    return midiStateParameter && std::round(midiStateParameter->value()) != 0.0f;
}

void GenericPluginProcessor::enqueueMidiEvent(const MidiEvent& event,
                                              std::int32_t offset) noexcept CINDER_REALTIME {
    if (!isMidiBlocked()) midiQueue.push({event, offset});
    if (midiOutQueue) midiOutQueue->push({event, offset});
}

void GenericPluginProcessor::programChanged(int bank, int program) noexcept CINDER_REALTIME {
    if (adapter) adapter->programChanged(bank, program);
}

namespace {

void writeAudio(std::ostream& stream, const AudioSource& source) {
    const std::int32_t numChannels = source.getChannelCount();
    const std::int32_t numFrames = source.getFrameCount();
    const std::int32_t frameSize = source.getFrameSize();
    writeValue(stream, numChannels);
    writeValue(stream, numFrames);
    writeValue(stream, frameSize);
    for (std::int32_t frame = 0; frame < numFrames; ++frame)
        for (std::int32_t channel = 0; channel < numChannels; ++channel)
            writeValues(stream, source.getFrameData(frame, channel),
                        static_cast<std::size_t>(frameSize));
}

void writeLevels(std::ostream& stream, const LevelSource& source) {
    for (std::int32_t i = 0; i < LevelSource::numValues; ++i)
        writeValue(stream, source.getValue(i));
    writeValue(stream, source.getStatus());
}

void writeSpectrum(std::ostream& stream, const SpectrumSource& source) {
    const float* const values = source.getValues();
    const std::int32_t size = values ? source.getSize() : 0;
    writeValue(stream, source.getFrameId());
    writeValue(stream, size);
    if (size > 0) writeValues(stream, values, static_cast<std::size_t>(size));
}

}  // namespace

void GenericPluginProcessor::writeRealtimeData(BinaryDataWriter& writer) {
    std::ostream& stream = writer.getStream();
    for (AudioSource* source : audioSources)
        source->lock();
    for (SpectrumSource* source : spectrumSources)
        source->lock();
    for (const AudioSource* source : audioSources)
        writeAudio(stream, *source);
    for (const LevelSource* source : levelSources)
        writeLevels(stream, *source);
    for (const SpectrumSource* source : spectrumSources)
        writeSpectrum(stream, *source);
    for (SpectrumSource* source : spectrumSources)
        source->unlock();
    for (AudioSource* source : audioSources)
        source->unlock();
    if (midiOutQueue) writeMidiEvents(writer);
}

void GenericPluginProcessor::resetLevels(int source, std::uint32_t requests) {
    if (source < 0 || source >= static_cast<int>(levelSources.size())) return;
    LevelSource& level = *levelSources[static_cast<std::size_t>(source)];
    if (requests & 1) level.resetFirst();
    if (requests & 2) level.resetSecond();
}

/// Each event behind a 1, a 0 at the end.
void GenericPluginProcessor::writeMidiEvents(BinaryDataWriter& writer) {
    std::ostream& stream = writer.getStream();
    TimedMidiEvent next{};
    while (midiOutQueue->pop(next))
        for (const std::uint8_t byte :
             {std::uint8_t{1}, next.event.status, next.event.data1, next.event.data2})
            stream.put(static_cast<char>(byte));
    stream.put('\0');
}

}  // namespace cinder
