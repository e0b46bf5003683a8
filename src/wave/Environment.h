#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/NotifyEvent.h"
#include "core/Realtime.h"
#include "wave/BasicBlock.h"

namespace cinder::wave {

class Producer;

/// The clock of one processing instance, and the lists of what must be visited every block.
///
/// One cycle is `beginBlock`, then pulls of all outputs, then `render`. A producer renders at most
/// once a cycle, when it is first pulled; a sink renders in every cycle.
///
/// State   sample position, cycle number, rate; belongs to the audio thread while audio runs
/// Errors  none; a rate that is not a positive number is ignored
class Environment {
public:
    enum class ResetMode : std::int32_t {
        ActiveOnly = 0,  ///< clears the producers that are active
        All = 1,         ///< clears every producer with state
        MarkOnly = 2,    ///< clears nothing; running ramps end and the next values jump
    };

    /// Flag of `render`: the cycle is skipped. Time goes on, nothing runs.
    static constexpr unsigned skipCycle = 1;
    /// Flags a sink's render sees: an ordinary sink that nobody has pulled, or one that is visited
    /// behind the pulls in every cycle.
    static constexpr unsigned sinkVisit = 1;
    static constexpr unsigned writeVisit = 2;

    Environment();
    virtual ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    virtual std::int32_t getMaxBlockSize() const { return maxBlockSize; }
    /// Nothing here: this environment's block size is constant. One with a variable block size
    /// derives and keeps the list. The zero block is older than that list and has to be put on it.
    virtual void addDynamicMaxBlockSizeListener(DynamicMaxBlockSizeListener*) {}
    virtual void removeDynamicMaxBlockSizeListener(DynamicMaxBlockSizeListener*) {}

    /// Starts a cycle; what was rendered before counts as old. [audio]
    void beginBlock() noexcept CINDER_REALTIME { ++blockId; }
    /// Visits the sinks and moves time on by `numSamples`. [audio]
    void render(int numSamples, unsigned flags) noexcept CINDER_REALTIME;
    /// A discontinuity: from here on every ramp has ended. [audio]
    void reset(ResetMode mode) noexcept CINDER_REALTIME;
    /// A really different rate clears every producer, then fires `sampleRateChanged`, whose
    /// handlers may allocate. [audio]
    void setSampleRate(float rate);

    /// From every producer's constructor. Makes room, so that the lists never grow while audio
    /// runs.
    void registerProducer();
    void addSink(Producer* producer, unsigned priority) noexcept CINDER_REALTIME;  ///< [audio]
    void removeSink(Producer* producer) noexcept CINDER_REALTIME;                  ///< [audio]
    void addResettable(Producer* producer) { resettables.push_back(producer); }
    void removeResettable(Producer* producer) { std::erase(resettables, producer); }
    /// From here on producers vanish without unlinking themselves; otherwise the teardown of a
    /// large graph would take quadratic time.
    void beginShutdown() { destroying = true; }

    bool isDestroying() const { return destroying; }
    std::uint32_t getBlockId() const { return blockId; }
    std::uint64_t getPosition() const { return position; }
    /// Position of the last discontinuity of any kind.
    std::uint64_t getResetPosition() const { return resetPosition; }
    /// Position of the last one that cleared state.
    std::uint64_t getHardResetPosition() const { return hardResetPosition; }
    float getSampleRate() const { return sampleRate; }
    /// A block of silence, never written.
    BasicBlock<float>* getZeroBlock() const { return zeroBlock.get(); }

    /// Fired after the rate has really changed; the argument is the environment.
    NotifyEvent sampleRateChanged;

private:
    std::vector<Producer*> sinks;
    std::size_t nextSink = 0;  // the one that `render` visits next; never behind the end
    bool destroying = false;
    const std::int32_t maxBlockSize = 256;
    std::int32_t producerCount = 0;
    std::int32_t firstPriorityCount = 0;  // sinks of priority 0, which stand at the front
    std::uint64_t resetPosition = 0;
    std::vector<Producer*> resettables;
    std::uint64_t hardResetPosition = 0;
    std::uint64_t position = 0;
    float sampleRate = 44100.0f;
    std::uint32_t blockId = 0;
    std::unique_ptr<BasicBlock<float>> zeroBlock;
};

}  // namespace cinder::wave
