#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::simd {

/// See BlockMath.h for what each of them does.
struct BlockMathKernels {
    void (*scale)(const float* in, float gain, float* out, int n) noexcept;
    void (*multiply)(const float* a, const float* b, float* out, int n) noexcept;
    void (*add)(const float* in, float* sum, int n) noexcept;
    void (*addScaled)(const float* in, float gain, float* sum, int n) noexcept;
    void (*addProduct)(const float* a, const float* b, float* sum, int n) noexcept;
    void (*sumScaled)(const float* const* in, const float* gain, int numInputs, float* sum,
                      int n) noexcept;
    void (*crossfade)(const float* from, const float* to, const float* fade, float* out,
                      int n) noexcept;
};

CINDER_KERNELS(BlockMathKernels, blockMathKernels)

}  // namespace cinder::simd
