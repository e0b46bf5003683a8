#pragma once

#include <cstdint>
#include <span>

namespace cinder {

/// A stream of audio that is read once, from front to back.
/// Shape   1 or 2 channels, one float array per channel; numFrames() is exact and at least 1
/// Range   full scale is 1; float files may exceed it and may hold values that aren't finite
/// State   the position; the same samples for any cut into reads
/// Errors  UserError when the audio ends early or can't be decoded
class AudioReader {
public:
    AudioReader() = default;
    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;
    virtual ~AudioReader() = default;

    /// Fills up to `maxFrames` samples of each channel and answers how many there were: fewer than
    /// asked for only at the end, then 0.
    virtual int read(std::span<float* const> channels, int maxFrames) = 0;

    virtual int numChannels() const = 0;
    virtual int sampleRate() const = 0;
    virtual std::int64_t numFrames() const = 0;
};

}  // namespace cinder
