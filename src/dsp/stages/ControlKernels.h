#pragma once

#include "core/simd/KernelTable.h"

namespace cinder {

/// What controls are turned into, sample by sample. For any n; an output may be any input.
struct ControlKernels {
    void (*decibels)(const float* in, float* out, int n) noexcept;         // 20 log10 |x|
    void (*gainsOfDecibels)(const float* in, float* out, int n) noexcept;  // 10^(x / 20)
    void (*gainsOfLevels)(const float* in, float* out, int n) noexcept;    // GainLevelConverter
    /// left = level - max(pan, 0) level
    void (*panToLeft)(const float* level, const float* pan, float* left, int n) noexcept;
    /// right = level + min(pan, 0) level
    void (*panToRight)(const float* level, const float* pan, float* right, int n) noexcept;
};

CINDER_KERNELS(ControlKernels, controlKernels)

}  // namespace cinder
