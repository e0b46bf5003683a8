#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::simd {

struct ModulationKernels {
    /// out = base + the sum of sources[k] * levels[k], taken in order, within minimum..maximum; a
    /// NaN gives the minimum. Out is none of the others.
    void (*sumProducts)(const float* base, const float* const* sources, const float* const* levels,
                        int numProducts, float minimum, float maximum, float* out, int n) noexcept;
    /// left = level - max(pan, 0) * level, right = min(pan, 0) * level + level.
    void (*panGains)(const float* level, const float* pan, float* left, float* right,
                     int n) noexcept;
};

CINDER_KERNELS(ModulationKernels, modulationKernels)

}  // namespace cinder::simd
