#pragma once

#include <cstdint>

#include "core/Realtime.h"
#include "wave/Producer.h"

namespace cinder::wave {

/// A ring of samples, its size a power of two that holds the longest delay and one more block.
/// Shape   one channel; write and read 1..maxBlockSize samples at a time
/// State   what was written; a read from before the first sample answers the fill value
class Delay final : public Component, public DynamicMaxBlockSizeListener {
public:
    explicit Delay(Environment* environment, std::int32_t maxDelay = 0);
    ~Delay();
    Delay(const Delay&) = delete;
    Delay& operator=(const Delay&) = delete;

    /// Allocates, and forgets what was written.
    void setMaxDelay(std::int32_t samples);
    /// Clamped to 0..maxDelay. [audio]
    void setDelay(std::int32_t samples) noexcept CINDER_REALTIME;
    void setFillValue(float value) { fillValue = value; }
    void maxBlockSizeChanged() override;

    /// [audio]
    void write(const float* source, int numSamples) noexcept CINDER_REALTIME;
    /// The samples that lie `delaySamples` behind the read base. [audio]
    void read(std::int32_t delaySamples, float* destination,
              int numSamples) const noexcept CINDER_REALTIME;
    /// Forgets what was written. [audio]
    void clear() noexcept CINDER_REALTIME {
        validCount = 0;
        writePosition = 0;
    }
    /// Where delay 0 lies: 0 if this block has been written already, the block's length if it will
    /// be written behind the read. [audio]
    void setReadAhead(std::int32_t samples) noexcept CINDER_REALTIME;

    std::int32_t getDelay() const { return delay; }
    std::int32_t getMaxDelay() const { return maxDelay; }
    std::int32_t getSize() const { return buffer.size(); }
    std::int32_t getMask() const { return mask; }
    std::int32_t getValidCount() const { return validCount; }
    std::int32_t getWritePosition() const { return writePosition; }
    /// Ring index of a tap for the block at hand, before `writePosition` is added and masked.
    std::int32_t getReadBase() const { return readBase; }
    std::int32_t getTapBase() const { return tapBase; }
    const float* getData() const { return buffer.data(); }
    float getFillValue() const { return fillValue; }

private:
    void resizeBuffer();
    void updateTapBase() noexcept CINDER_REALTIME { tapBase = readBase - delay - 1; }

    BasicBlock<float> buffer;
    float fillValue = 0.0f;
    std::int32_t delay = 0;
    std::int32_t mask = 0;
    std::int32_t maxDelay = 0;
    std::int32_t validCount = 0;  // samples written, saturated at the ring's size
    std::int32_t readBase = 0;
    std::int32_t tapBase = 0;
    std::int32_t writePosition = 0;
};

}  // namespace cinder::wave
