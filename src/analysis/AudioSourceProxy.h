#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/RealtimeSources.h"
#include "core/CriticalSection.h"
#include "state/BinaryData.h"

namespace cinder {

/// The interface's copy of an audio source: a ring of frames, filled from a stream.
///
///     stream  channels, frames, frame size, then frame by frame, channel by channel the samples
///     ring    sample i of channel c of the frame at index k stands at (k channels + c) size + i
///
/// Shape   the ring holds a quarter of a second in whole frames, at least two; one slot stays free.
///         A writer that laps the reader leaves the newest frames behind, in order
/// Range   1..16 channels of 1..65536 samples, a rate up to 768 kHz: at most 16 MB
/// State   the ring and two positions, guarded by a section of its own. A reader stays inside it
///         from `lock` to `unlock`, which gives back all frames at once
/// Errors  a short stream ends with its last whole frame; a layout out of range fails the stream
///         and changes nothing
class AudioSourceProxy final : public AudioSource {
public:
    static constexpr std::int32_t maxChannels = 16;
    static constexpr std::int32_t maxFrameSize = 65536;
    static constexpr float maxSampleRate = 768000.0f;

    AudioSourceProxy();

    /// Takes in what the stream brings. Answers whether the stream is still good.
    bool read(BinaryDataReader& reader);
    /// Drops all frames and makes room for a quarter of a second at the new rate. What is no
    /// positive number is ignored, what is above the range is cut.
    void setSampleRate(float rate);

    void lock() override;
    void unlock() override;
    std::int32_t getFrameSize() const override { return frameSize; }
    /// Null while nothing has been read. A frame beyond the ring answers like frame 0.
    const float* getFrameData(std::int32_t frame, std::int32_t channel) const override;
    std::int32_t getFrameCount() const override;
    std::int32_t getChannelCount() const override { return numChannels; }

    /// Frames that have ever come in, modulo 2^32.
    std::int32_t getTotalFrames() const { return totalFrames; }
    std::int32_t getCapacity() const { return capacity; }

private:
    void resizeRing(std::int32_t channels, std::int32_t size);
    bool readFrame(BinaryDataReader& reader);
    float* slot(std::int32_t index);

    std::int32_t frameSize = 0;
    std::vector<float> ring;
    std::int32_t capacity = 0;  // frames
    std::int32_t numChannels = 0;
    std::int32_t readPosition = 0;
    float sampleRate = 44100.0f;
    std::unique_ptr<CriticalSection> section;
    std::int32_t totalFrames = 0;
    std::int32_t writePosition = 0;
    std::int32_t lockCount = 0;
};

}  // namespace cinder
