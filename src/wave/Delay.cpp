#include "wave/Delay.h"

#include <algorithm>
#include <bit>

namespace cinder::wave {

Delay::Delay(Environment* environment, std::int32_t maxDelay)
    : Component(environment), buffer(0), maxDelay(std::max(maxDelay, 0)) {
    environment->addDynamicMaxBlockSizeListener(this);
    resizeBuffer();
    delay = this->maxDelay;
    updateTapBase();
}

Delay::~Delay() {
    environment->removeDynamicMaxBlockSizeListener(this);
}

void Delay::setMaxDelay(std::int32_t samples) {
    samples = std::max(samples, 0);
    if (samples == maxDelay) return;
    maxDelay = samples;
    resizeBuffer();
    setDelay(delay);
    clear();
}

void Delay::setDelay(std::int32_t samples) noexcept CINDER_REALTIME {
    delay = std::clamp(samples, 0, maxDelay);
    updateTapBase();
}

void Delay::maxBlockSizeChanged() {
    resizeBuffer();
    // What was written stays, as far as the ring reaches; a smaller ring may end before it.
    writePosition &= mask;
    validCount = std::min(validCount, buffer.size());
    updateTapBase();
}

void Delay::write(const float* source, int numSamples) noexcept CINDER_REALTIME {
    const int untilEnd = std::min(numSamples, buffer.size() - writePosition);
    std::copy_n(source, untilEnd, buffer.data() + writePosition);
    std::copy_n(source + untilEnd, numSamples - untilEnd, buffer.data());
    writePosition = (writePosition + numSamples) & mask;
    validCount = std::min(validCount + numSamples, buffer.size());
}

void Delay::read(std::int32_t delaySamples, float* destination,
                 int numSamples) const noexcept CINDER_REALTIME {
    const std::int32_t start = (writePosition + readBase - delaySamples - numSamples) & mask;
    const int untilEnd = std::min(numSamples, buffer.size() - start);
    if (start < validCount)
        std::copy_n(buffer.data() + start, untilEnd, destination);
    else
        std::fill_n(destination, numSamples, fillValue);
    std::copy_n(buffer.data(), numSamples - untilEnd, destination + untilEnd);
}

void Delay::setReadAhead(std::int32_t samples) noexcept CINDER_REALTIME {
    readBase = buffer.size() + samples;
    updateTapBase();
}

void Delay::resizeBuffer() {
    const std::int32_t ahead = readBase - buffer.size();
    const auto needed = static_cast<std::uint32_t>(maxDelay + environment->getMaxBlockSize());
    const auto size = static_cast<std::int32_t>(std::bit_ceil(std::max(needed, 1u)));
    buffer.resize(size);
    mask = size - 1;
    readBase = size + ahead;
}

}  // namespace cinder::wave
