#pragma once

#include "core/simd/KernelTable.h"
#include "dsp/filters/BiquadCoefficients.h"

namespace cinder {

/// A section of second order with a gain, of which only the gain moves. With
/// E = exp(gainDb * nepersPerDb) its numerator at s = j at the set frequency is
///   (s2 + s2Squared E^2) s^2 + max(s1 E, leastS1) s + s0 + s0Squared E^2
/// and its denominator the same of 1 / E.
struct ShelvingLaw {
    double nepersPerDb = 0.0;
    double s2 = 0.0, s2Squared = 0.0;
    double s1 = 0.0, leastS1 = 0.0;
    double s0 = 0.0, s0Squared = 0.0;
    double tangent = 0.0;  // of the bilinear transform
};

struct ShelvingKernels {
    /// The coefficients for any number of gains. The same bits for a gain alone or in company;
    /// between sets with and without a fused product the last bits differ.
    void (*design)(const ShelvingLaw& law, const float* gainsDb, int count,
                   BiquadCoefficients* out) noexcept;
};

CINDER_KERNELS(ShelvingKernels, shelvingKernels)

}  // namespace cinder
