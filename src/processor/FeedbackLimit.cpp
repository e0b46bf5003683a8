#include "processor/FeedbackLimit.h"

#include <algorithm>

#include "distortion/strip/FreqToDelayConverter.h"
#include "modulation/matrix/ModulationMatrix.h"
#include "processor/BandTargets.h"
#include "wave/Environment.h"

namespace cinder {

namespace {

constexpr float noLoopMs = 1000.0f;

/// Whether the amount is 0, and will be until the next host block.
bool hasFeedback(const ModulationMatrix::Target& amount) noexcept CINDER_REALTIME {
    if (amount.hasActiveSlot()) return amount.clampMinimum != 0.0f || amount.clampMaximum != 0.0f;
    return amount.base.getTarget() != 0.0f ||
           (amount.base.isRamping() && amount.base.getRampStart() != 0.0f);
}

/// The highest that the frequency gets in the next host block, in log2 of Hz.
float highestFrequency(const ModulationMatrix::Target& frequency) noexcept CINDER_REALTIME {
    if (frequency.hasActiveSlot()) return frequency.clampMaximum;
    const bool falls = frequency.base.isRamping() && !(frequency.base.getRampStep() > 0.0f);
    return falls ? frequency.base.getRampStart() : frequency.base.getTarget();
}

}  // namespace

int longestSubBlock(const ModulationMatrix& matrix, int numBands,
                    int converterLatency) noexcept CINDER_REALTIME {
    const wave::Environment& environment = *matrix.getEnvironment();
    const float elsewhere =
        FreqToDelayConverter::msOf(converterLatency, environment.getSampleRate());
    float ms = noLoopMs;
    for (int band = 0; band < numBands; ++band) {
        if (!hasFeedback(matrix.getTarget(bandTarget(band, BandTarget::FeedbackAmount)))) continue;
        const float log2Hz =
            highestFrequency(matrix.getTarget(bandTarget(band, BandTarget::FeedbackFrequency)));
        ms = std::min(ms, FreqToDelayConverter::delayMs(log2Hz, elsewhere));
    }
    // In the delay's own arithmetic: a sample more, by rounding, would be one not written yet.
    const double samples =
        static_cast<double>(ms) * (static_cast<double>(environment.getSampleRate()) * 0.001);
    const int longest = environment.getMaxBlockSize();
    return std::max(static_cast<int>(std::min(samples, static_cast<double>(longest))) & ~3, 4);
}

}  // namespace cinder
