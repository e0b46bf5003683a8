#include "distortion/drive/SoftClipper.h"

#include "core/simd/BlockMath.h"
#include "distortion/curves/VectorClip.h"

namespace cinder {

void SoftClipper::enter(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME {
    constexpr float gain = 0.75f;
    simd::scale(in, gain, out, numSamples);
}

void SoftClipper::shape(float* samples, int count) noexcept CINDER_REALTIME {
    vectorClipPolynomeOrder3Fast(samples, samples, count);
}

}  // namespace cinder
