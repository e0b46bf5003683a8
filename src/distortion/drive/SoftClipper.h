#pragma once

#include "distortion/drive/OversampledStage.h"

namespace cinder {

/// The last stage of a channel: y = 1.5 c - 0.5 c^3, c = 0.75 x within -1..1.
/// Shape   one channel, and two together as OversampledStage says; without a converter style, or at
///         factor 1, the curve runs at the base rate
/// Range   small signals gain 1.125; |y| <= 1, but for what the decimator's filters overshoot
/// State   that of the converters; the same bits for any cut of the block
/// Errors  none
class SoftClipper final : public OversampledStage {
public:
    using OversampledStage::OversampledStage;

private:
    void enter(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME override;
    void shape(float* samples, int count) noexcept CINDER_REALTIME override;
    void leave(float*, int) noexcept CINDER_REALTIME override {}
};

}  // namespace cinder
