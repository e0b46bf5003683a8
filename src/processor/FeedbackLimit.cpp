#include "processor/FeedbackLimit.h"

#include <algorithm>
#include <cmath>

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

int longestSubBlock(const ModulationMatrix& matrix, int numActiveBands,
                    int converterLatency) noexcept CINDER_REALTIME {
    float ms = noLoopMs;
    for (int band = 0; band < numActiveBands; ++band) {
        if (!hasFeedback(matrix.getTarget(bandTarget(band, BandTarget::FeedbackAmount)))) continue;
        const float log2Hz =
            highestFrequency(matrix.getTarget(bandTarget(band, BandTarget::FeedbackFrequency)));
        ms = std::min(ms, 1000.0f * std::exp2(-log2Hz));
    }
    const wave::Environment& environment = *matrix.getEnvironment();
    const auto samples = static_cast<int>(ms * environment.getSampleRate() * 0.001f);
    const int result = (samples - converterLatency) & ~3;
    return std::clamp(result, 4, environment.getMaxBlockSize());
}

}  // namespace cinder
