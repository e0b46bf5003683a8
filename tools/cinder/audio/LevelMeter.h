#pragma once

#include <cstdint>
#include <span>

namespace cinder {

/// Peak and RMS of all that has been added, over all channels together:
/// peak = max |x|, rms = sqrt(mean x^2), in dB relative to 1. A full-scale sine has 0 and -3.01 dB.
/// Range   -infinity dB for silence, and for nothing at all
/// State   maximum, sum and counts, in double; RMS may differ by rounding with the cut of blocks
/// Errors  none; samples that aren't finite are counted and left out
class LevelMeter {
public:
    void add(std::span<const float* const> channels, int numFrames) noexcept;

    double peak() const noexcept { return highest; }
    double rms() const noexcept;
    double peakDb() const noexcept;
    double rmsDb() const noexcept;
    std::int64_t numNonFinite() const noexcept { return nonFinite; }

private:
    double highest = 0.0;
    double sumOfSquares = 0.0;
    std::int64_t counted = 0;
    std::int64_t nonFinite = 0;
};

}  // namespace cinder
