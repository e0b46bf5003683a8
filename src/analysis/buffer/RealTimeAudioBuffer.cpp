#include "analysis/buffer/RealTimeAudioBuffer.h"

#include <cmath>
#include <cstring>

namespace cinder {

RealTimeAudioBuffer::RealTimeAudioBuffer(wave::Environment* environment, wave::Producer* input,
                                         int channelCount, int frameSize, int baseFrameCount)
    : Producer(environment, true),
      input(input),
      frameSize(std::clamp(frameSize, 1, maxFrameSize)),
      baseFrameCount(std::clamp(baseFrameCount, 1, maxBaseFrameCount)),
      channelCount(std::clamp(channelCount, 1, maxChannels)) {
    environment->sampleRateChanged.addHandler(
        NotifyEvent::makeHandler(this, &RealTimeAudioBuffer::sampleRateChanged));
    makeResettable();
    setRenderPriority(0);
    updateActive();
}

RealTimeAudioBuffer::~RealTimeAudioBuffer() {
    environment->sampleRateChanged.removeHandler(
        *NotifyEvent::makeHandler(this, &RealTimeAudioBuffer::sampleRateChanged));
}

RealTimeAudioBuffer::Measurement* RealTimeAudioBuffer::createMeasurement() {
    measurements.push_back(std::make_unique<Measurement>(this, measurements.size()));
    const std::size_t numSignals = measurements.size() * static_cast<std::size_t>(channelCount);
    const auto mostFrames = static_cast<std::size_t>(baseFrameCount) * mostGrowth;
    inputPointers.assign(numSignals, nullptr);

    // A frame now holds more signals than before. The room for all frames there can ever be is
    // reserved, so that a reader on another thread may look into the list while it grows.
    reset();
    giveBack();
    for (FrameIndex index = noFrame; freeQueue.pop(index);) {
    }
    frames.clear();
    frames.reserve(mostFrames * numSignals);
    lockedFrames.reserve(mostFrames);
    frameTotal = 0;
    overrun = false;
    addFrames();
    updateActive();
    return measurements.back().get();
}

void RealTimeAudioBuffer::updateActive() noexcept CINDER_REALTIME {
    setActive(std::any_of(measurements.begin(), measurements.end(),
                          [](const auto& measurement) { return measurement->enabled.get(); }));
}

/// round(base * max(min(rate, 768000) / 96000, 1))
int RealTimeAudioBuffer::framesWanted() const {
    constexpr float baseRate = 96000.0f;
    const float growth =
        std::clamp(environment->getSampleRate() / baseRate, 1.0f, static_cast<float>(mostGrowth));
    return static_cast<int>(std::lround(static_cast<float>(baseFrameCount) * growth));
}

void RealTimeAudioBuffer::addFrames() {
    for (const int wanted = framesWanted(); frameTotal < wanted; ++frameTotal) {
        for (std::size_t i = 0; i < inputPointers.size(); ++i)
            frames.push_back(std::make_unique<wave::BasicBlock<float>>(frameSize));
        freeQueue.push(frameTotal);
    }
}

void RealTimeAudioBuffer::sampleRateChanged(NotifyEvent::Argument) {
    if (!measurements.empty()) addFrames();
}

void RealTimeAudioBuffer::render(wave::BasicBlock<float>*, int numSamples,
                                 unsigned flags) noexcept CINDER_REALTIME {
    passOn(environment->getZeroBlock());
    if (flags & wave::Environment::writeVisit) process(numSamples);
}

void RealTimeAudioBuffer::process(int count) noexcept CINDER_REALTIME {
    if (overrun.load(std::memory_order_acquire)) return;
    collectInputs(count);
    for (int from = 0; from < count;) {
        if (currentFrame == noFrame && !takeFrame()) return;
        const int n = std::min(frameSize - writePosition, count - from);
        store(from, n);
        from += n;
        writePosition += n;
        if (writePosition < frameSize) continue;
        filledQueue.push(currentFrame);
        currentFrame = noFrame;
        writePosition = 0;
    }
}

void RealTimeAudioBuffer::collectInputs(int count) noexcept CINDER_REALTIME {
    std::size_t signal = 0;
    for (const auto& measurement : measurements)
        for (wave::Producer* producer : measurement->inputs)
            inputPointers[signal++] =
                (producer ? producer->pull(count) : environment->getZeroBlock())->data();
}

bool RealTimeAudioBuffer::takeFrame() noexcept CINDER_REALTIME {
    if (freeQueue.pop(currentFrame)) return true;
    if (!blocking) return filledQueue.pop(currentFrame);
    overrun.store(true, std::memory_order_release);
    return false;
}

void RealTimeAudioBuffer::store(int from, int count) noexcept CINDER_REALTIME {
    const std::size_t numSignals = inputPointers.size();
    const auto first = static_cast<std::size_t>(currentFrame) * numSignals;
    for (std::size_t i = 0; i < numSignals; ++i)
        std::memcpy(frames[first + i]->data() + writePosition, inputPointers[i] + from,
                    static_cast<std::size_t>(count) * sizeof(float));
}

void RealTimeAudioBuffer::reset() noexcept CINDER_REALTIME {
    // Counted, since a reader may give frames back all the while.
    FrameIndex index = noFrame;
    for (int i = 0; i < frameTotal && filledQueue.pop(index); ++i)
        freeQueue.push(index);
    if (currentFrame != noFrame) freeQueue.push(currentFrame);
    currentFrame = noFrame;
    writePosition = 0;
}

void RealTimeAudioBuffer::acquire() {
    drain();
    if (!overrun.load(std::memory_order_acquire)) return;
    // Recording stands still, and the last frames before it did so may have come behind the first
    // look. All of them are from before the gap.
    drain();
    giveBack();
    overrun.store(false, std::memory_order_release);
}

void RealTimeAudioBuffer::drain() {
    for (FrameIndex index = noFrame; filledQueue.pop(index);)
        lockedFrames.push_back(index);
}

void RealTimeAudioBuffer::giveBack() {
    for (; !lockedFrames.empty(); lockedFrames.pop_back())
        freeQueue.push(lockedFrames.back());
}

const float* RealTimeAudioBuffer::frameData(std::int32_t frame, std::size_t signal) const {
    const auto index = static_cast<std::size_t>(lockedFrames[static_cast<std::size_t>(frame)]);
    return frames[index * inputPointers.size() + signal]->data();
}

RealTimeAudioBuffer::Measurement::Measurement(RealTimeAudioBuffer* buffer, std::size_t position)
    : buffer(buffer),
      position(position),
      inputs(static_cast<std::size_t>(buffer->channelCount), buffer->input) {}

void RealTimeAudioBuffer::Measurement::setInput(int channel, wave::Producer* producer) {
    if (channel >= 0 && channel < buffer->channelCount)
        inputs[static_cast<std::size_t>(channel)] = producer;
}

void RealTimeAudioBuffer::Measurement::lock() {
    if (buffer->lockCount++ == 0) buffer->acquire();
}

void RealTimeAudioBuffer::Measurement::unlock() {
    if (--buffer->lockCount == 0) buffer->giveBack();
}

std::int32_t RealTimeAudioBuffer::Measurement::getFrameCount() const {
    return static_cast<std::int32_t>(buffer->lockedFrames.size());
}

const float* RealTimeAudioBuffer::Measurement::getFrameData(std::int32_t frame,
                                                            std::int32_t channel) const {
    if (frame < 0 || frame >= getFrameCount()) return nullptr;
    if (channel < 0 || channel >= buffer->channelCount) return nullptr;
    const std::size_t numChannels = inputs.size();
    return buffer->frameData(frame, position * numChannels + static_cast<std::size_t>(channel));
}

void RealTimeAudioBuffer::Measurement::propertyChanged(AbstractProperty*) {
    buffer->updateActive();
}

}  // namespace cinder
