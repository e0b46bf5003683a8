#pragma once

#include <cstdint>

#include "core/simd/KernelTable.h"

namespace cinder {

struct NoiseInputs {
    const float* signal;
    const float* level;
    const float* gain;
    float lowestGain;  // up to which a signal of 0 gets no noise
};

struct NoiseKernels {
    /// out = signal + noise * level * gain, for any n; out is none of the inputs. Answers with the
    /// seed behind the 2 n numbers it has used.
    std::uint32_t (*addNoise)(const NoiseInputs& in, float* out, int n,
                              std::uint32_t seed) noexcept;
    /// The seed behind the 2 n numbers of n samples that got no noise.
    std::uint32_t (*skip)(std::uint32_t seed, int n) noexcept;
};

CINDER_KERNELS(NoiseKernels, noiseKernels)

}  // namespace cinder
