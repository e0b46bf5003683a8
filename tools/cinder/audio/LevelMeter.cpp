#include "cinder/audio/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace cinder {

void LevelMeter::add(std::span<const float* const> channels, int numFrames) noexcept {
    // A sum for each block keeps the long sum's rounding out of the short one.
    for (const float* channel : channels) {
        double blockHighest = 0.0;
        double blockSum = 0.0;
        int blockNonFinite = 0;
        for (int i = 0; i < numFrames; ++i) {
            const auto x = static_cast<double>(channel[i]);
            if (std::isfinite(x)) {
                blockHighest = std::max(blockHighest, std::abs(x));
                blockSum += x * x;
            } else {
                ++blockNonFinite;
            }
        }
        highest = std::max(highest, blockHighest);
        sumOfSquares += blockSum;
        counted += numFrames - blockNonFinite;
        nonFinite += blockNonFinite;
    }
}

double LevelMeter::rms() const noexcept {
    return counted > 0 ? std::sqrt(sumOfSquares / static_cast<double>(counted)) : 0.0;
}

double LevelMeter::peakDb() const noexcept {
    return 20.0 * std::log10(peak());
}

double LevelMeter::rmsDb() const noexcept {
    return 20.0 * std::log10(rms());
}

}  // namespace cinder
