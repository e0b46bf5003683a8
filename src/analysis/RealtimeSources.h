#pragma once

#include <cstdint>

namespace cinder {

/// Real-time data with a lock. A reader brackets every access between `lock` and `unlock`.
/// State   locks count: only the first one of a nest and the last unlock do work. All sources are
///         read from one thread at a time
class LockedSource {
public:
    virtual ~LockedSource() = default;
    virtual void lock() = 0;    ///< any thread but [audio]
    virtual void unlock() = 0;  ///< the thread that locked
};

/// Audio in frames, for whoever wants to analyse it.
class AudioSource : public LockedSource {
public:
    /// Samples in a frame.
    virtual std::int32_t getFrameSize() const = 0;
    /// The frame's samples of one channel.
    virtual const float* getFrameData(std::int32_t frame, std::int32_t channel) const = 0;
    /// Frames that the lock has made available. Frame 0 is the oldest.
    virtual std::int32_t getFrameCount() const = 0;
    virtual std::int32_t getChannelCount() const = 0;
};

/// A spectrum of linear magnitudes.
class SpectrumSource : public LockedSource {
public:
    /// Bin by bin, or null if there are none.
    virtual const float* getValues() const = 0;
    /// The analysis size: the count of values, of which 0 to size / 2 mean something.
    virtual std::int32_t getSize() const = 0;
    /// Grows with every analysis frame, so a reader can tell new data from old.
    virtual std::int32_t getFrameId() const = 0;
};

/// The levels of a meter. It has no lock: whoever owns the source says under which one it is read.
class LevelSource {
public:
    static constexpr std::int32_t numValues = 5;

    virtual std::uint32_t getStatus() const = 0;
    /// Index 0 to 4.
    virtual float getValue(std::int32_t index) const = 0;
    virtual void resetFirst() = 0;
    virtual void resetSecond() = 0;

protected:
    ~LevelSource() = default;
};

}  // namespace cinder
