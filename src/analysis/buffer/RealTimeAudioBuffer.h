#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/RealtimeSources.h"
#include "core/LockFreeQueue.h"
#include "core/NotifyEvent.h"
#include "core/Property.h"
#include "wave/Producer.h"

namespace cinder {

/// Hands audio from the graph to whoever analyses it, in whole frames through two queues of frame
/// numbers: `freeQueue` to the audio thread, `filledQueue` back. Whoever has popped a number owns
/// that frame; neither side ever waits.
///
/// Shape   a sink behind the pulls, which nobody pulls; any number of measurements, each with the
///         same number of channels. Frames are the same for any cut of the blocks
/// Range   1..16 channels, frames of 1..65536 samples, a base count of 1..127, clamped
/// State   the frames: the base count up to 96 kHz, in proportion above, up to 8 times as many.
///         They are never given back. One frame is being written; reset() drops it, and those that
///         wait
/// Errors  none. A reader that is gone is the normal state of a closed window: when all frames are
///         full, recording stands still. What waits then is dropped at the next lock, since audio
///         from before a gap must not be joined to what follows, and recording goes on
class RealTimeAudioBuffer final : public wave::Producer {
public:
    static constexpr int maxChannels = 16;
    static constexpr int maxFrameSize = 65536;
    static constexpr int maxBaseFrameCount = 127;

    /// What an analysis of `analysisSize` samples wants, with a spectrum every quarter of it.
    struct FrameLayout {
        int frameSize, frameCount;
    };
    static constexpr FrameLayout getFrameLayout() {
        constexpr unsigned analysisSize = 2048, shortestRing = 8192, spareFrames = 4;
        constexpr unsigned frameSize = std::bit_ceil(analysisSize / 4);
        constexpr unsigned ring = std::max(shortestRing, std::bit_ceil(analysisSize));
        return {int{frameSize}, int{ring / frameSize + spareFrames}};
    }

    class Measurement;

    /// `input` is what each channel of a measurement hears until it is given its own; null is
    /// silence.
    RealTimeAudioBuffer(wave::Environment* environment, wave::Producer* input, int channelCount,
                        int frameSize, int baseFrameCount);
    ~RealTimeAudioBuffer() override;

    /// Owned by the buffer. All frames are made anew, so this is for the time before audio runs.
    Measurement* createMeasurement();

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    /// Drops what has been recorded. A reader may hold frames meanwhile. [audio]
    void reset() noexcept CINDER_REALTIME override;

    int getFrameSize() const { return frameSize; }
    int getChannelCount() const { return channelCount; }
    /// Frames there are at present.
    int getFrameTotal() const { return frameTotal; }

    /// With no free frame: true stops recording until the reader has run, false overwrites the
    /// oldest frame. Set before audio runs.
    Property<bool> blocking{true};

private:
    /// Eight bytes, as the queues want them.
    using FrameIndex = std::int64_t;
    static constexpr FrameIndex noFrame = -1;
    /// Every frame finds a node, so no push ever grows a queue or fails.
    static constexpr int queueNodes = 1024;
    static constexpr int mostGrowth = 8;
    static_assert(maxBaseFrameCount * mostGrowth <= queueNodes - 2);

    void process(int count) noexcept CINDER_REALTIME;
    void collectInputs(int count) noexcept CINDER_REALTIME;
    bool takeFrame() noexcept CINDER_REALTIME;
    void store(int from, int count) noexcept CINDER_REALTIME;
    void updateActive() noexcept CINDER_REALTIME;
    int framesWanted() const;
    void addFrames();
    void sampleRateChanged(NotifyEvent::Argument);

    void acquire();
    void drain();
    void giveBack();
    const float* frameData(std::int32_t frame, std::size_t signal) const;

    wave::Producer* const input;                                   // not owned
    std::vector<std::unique_ptr<wave::BasicBlock<float>>> frames;  // frame by frame the signals
    const int frameSize;
    LockFreeQueue<FrameIndex> freeQueue{queueNodes, queueNodes};
    LockFreeQueue<FrameIndex> filledQueue{queueNodes, queueNodes};
    std::vector<const float*> inputPointers;  // of this block, signal by signal
    std::atomic<bool> overrun{false};
    int lockCount = 0;                     // the reader's
    std::vector<FrameIndex> lockedFrames;  // the reader's
    std::vector<std::unique_ptr<Measurement>> measurements;
    const int baseFrameCount;
    const int channelCount;
    int frameTotal = 0;
    int writePosition = 0;
    FrameIndex currentFrame = noFrame;
};

/// One recorded signal of the buffer, as a source of audio. All measurements of a buffer share its
/// lock: the first lock takes over the frames that are full, the last unlock gives them back.
class RealTimeAudioBuffer::Measurement final : public AudioSource, public PropertyOwner {
public:
    Measurement(RealTimeAudioBuffer* buffer, std::size_t position);
    Measurement(const Measurement&) = delete;
    Measurement& operator=(const Measurement&) = delete;

    /// Wired before audio runs; null is silence. A channel that does not exist is ignored.
    void setInput(int channel, wave::Producer* producer);

    void lock() override;
    void unlock() override;
    std::int32_t getFrameSize() const override { return buffer->frameSize; }
    /// Null for a frame or a channel there is none of.
    const float* getFrameData(std::int32_t frame, std::int32_t channel) const override;
    std::int32_t getFrameCount() const override;
    std::int32_t getChannelCount() const override { return buffer->channelCount; }

    void propertyChanged(AbstractProperty* property) override;

    /// While no measurement is enabled the buffer is no sink and costs nothing; when one comes back
    /// it starts clean. [audio]
    Property<bool> enabled{true, this};

private:
    friend class RealTimeAudioBuffer;

    RealTimeAudioBuffer* buffer;
    std::size_t position;                 // among the buffer's measurements
    std::vector<wave::Producer*> inputs;  // one a channel, not owned
};

}  // namespace cinder
