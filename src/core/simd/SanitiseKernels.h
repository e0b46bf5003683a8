#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::simd {

struct SanitiseKernels {
    void (*sanitise)(const float* in, float* out, int n) noexcept;
};

CINDER_KERNELS(SanitiseKernels, sanitiseKernels)

}  // namespace cinder::simd
