#include "analysis/AudioSourceProxy.h"

#include <algorithm>
#include <cstddef>
#include <istream>

namespace cinder {

AudioSourceProxy::AudioSourceProxy() : section(CriticalSection::create()) {}

bool AudioSourceProxy::read(BinaryDataReader& reader) {
    std::istream& stream = reader.getStream();
    std::int32_t channels = 0, frames = 0, size = 0;
    readValue(stream, channels);
    readValue(stream, frames);
    readValue(stream, size);
    if (!reader.isGood()) return false;
    if (channels == 0 || frames == 0 || size == 0) return true;
    if (channels < 0 || channels > maxChannels || size < 0 || size > maxFrameSize || frames < 0) {
        // Where the samples end is unknown, and with it all that follows in the stream.
        stream.setstate(std::ios::failbit);
        return false;
    }

    const ScopedLock inside(*section);
    if (channels != numChannels || size != frameSize) resizeRing(channels, size);
    for (std::int32_t i = 0; i < frames; ++i)
        if (!readFrame(reader)) return false;
    return true;
}

/// A frame counts once it has come in whole. The slot at `writePosition` is never one of those that
/// wait for the reader, so a torn frame spoils nothing.
bool AudioSourceProxy::readFrame(BinaryDataReader& reader) {
    const auto samples =
        static_cast<std::size_t>(numChannels) * static_cast<std::size_t>(frameSize);
    readValues(reader.getStream(), slot(writePosition), samples);
    if (!reader.isGood()) return false;
    writePosition = (writePosition + 1) % capacity;
    totalFrames = static_cast<std::int32_t>(static_cast<std::uint32_t>(totalFrames) + 1u);
    return true;
}

void AudioSourceProxy::setSampleRate(float rate) {
    if (!(rate > 0.0f)) return;
    const ScopedLock inside(*section);
    sampleRate = std::min(rate, maxSampleRate);
    if (capacity > 0) resizeRing(numChannels, frameSize);
}

void AudioSourceProxy::resizeRing(std::int32_t channels, std::int32_t size) {
    const auto quarterSecond = static_cast<std::int32_t>(sampleRate * 0.25f);
    // One slot stays free, so a ring of one frame would never show any.
    const std::int32_t frames = std::max((quarterSecond + size - 1) / size, 2);
    ring = std::vector<float>(static_cast<std::size_t>(frames) * static_cast<std::size_t>(size) *
                              static_cast<std::size_t>(channels));
    capacity = frames;
    numChannels = channels;
    frameSize = size;
    readPosition = 0;
    writePosition = 0;
}

void AudioSourceProxy::lock() {
    section->enter();
    ++lockCount;
}

void AudioSourceProxy::unlock() {
    if (--lockCount == 0) readPosition = writePosition;
    section->leave();
}

const float* AudioSourceProxy::getFrameData(std::int32_t frame, std::int32_t channel) const {
    if (capacity == 0) return nullptr;
    const std::int32_t ahead = frame >= 0 && frame < capacity ? frame : 0;
    const std::int32_t index = (ahead + readPosition) % capacity;
    return ring.data() + (static_cast<std::ptrdiff_t>(index) * numChannels + channel) * frameSize;
}

std::int32_t AudioSourceProxy::getFrameCount() const {
    return capacity > 0 ? (writePosition - readPosition + capacity) % capacity : 0;
}

float* AudioSourceProxy::slot(std::int32_t index) {
    return ring.data() + static_cast<std::ptrdiff_t>(index) * numChannels * frameSize;
}

}  // namespace cinder
