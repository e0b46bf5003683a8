#pragma once

#include <cstdint>
#include <vector>

#include "wave/Delay.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// The largest magnitude of the last moments: y[n] = max |x[n-W]| .. |x[n]|, W = hold * rate.
///
/// While the window stands still, maxima of doubling spans give it, several samples at a time.
/// While it moves, a ring of the peaks in sight does: a sample that falls off marks the one before
/// as a peak, and every peak that a later one tops is dropped, so that the values fall from the
/// oldest to the newest. What lies in between can only be largest at the ends of the window.
///
/// Shape   one channel
/// Range   hold 0..2 ms; exact, whatever the window does; a NaN counts as 0
/// State   the magnitudes of the longest window; the same bits for any cut of the block
/// Errors  none; the first reset() at a new rate allocates, no other call does
class PeakHold final : public wave::Filter {
public:
    explicit PeakHold(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;  ///< [audio]

    wave::FloatParameterBus hold;  // milliseconds

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    struct Peak {
        std::int32_t sample;  // counted like `counter`
        float value;
    };

    int windowOf(float holdMs) const noexcept CINDER_REALTIME;
    void fitToSampleRate();
    void holdThroughMovingWindow(const float* holdMs, float* out,
                                 int numSamples) noexcept CINDER_REALTIME;
    void clearPeaks() noexcept CINDER_REALTIME;
    void findPeaks(const float* magnitudes, int numSamples) noexcept CINDER_REALTIME;
    void countFromHere() noexcept CINDER_REALTIME;
    void advance(float magnitude) noexcept CINDER_REALTIME;
    float highestPeak(int window) const noexcept CINDER_REALTIME;
    Peak& peakAt(std::int32_t place) noexcept CINDER_REALTIME {
        return ring[static_cast<std::size_t>((firstPeak + place) & ringMask)];
    }
    const Peak& peakAt(std::int32_t place) const noexcept CINDER_REALTIME {
        return ring[static_cast<std::size_t>((firstPeak + place) & ringMask)];
    }

    std::int32_t longestWindow = -1;
    std::int32_t silentSamples = 0;      // written last; beyond the longest window it says no more
    wave::Delay delay;                   // magnitudes
    wave::AlignedBuffer<float> history;  // the longest window and the block, in one piece

    std::vector<Peak> ring;
    std::int32_t ringMask = 0;
    std::int32_t firstPeak = 0;
    std::int32_t numPeaks = 0;
    bool peaksAreCurrent = true;  // not after a block whose window stood still
    float previous = 0.0f;
    bool peakMarked = false;
    std::int32_t counter = 0;  // samples since the start of the block
};

}  // namespace cinder
