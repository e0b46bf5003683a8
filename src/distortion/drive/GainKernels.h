#pragma once

#include <cstdint>

#include "core/simd/KernelTable.h"

namespace cinder {

/// A FunctionTable over a drive of 0..1.
struct GainTable {
    const float* values;
    float scale;
    std::int32_t mask;
};

struct GainKernels {
    /// out = in * table(drive), a drive beyond 0..1 limited and NaN taken as 0. For any n; out may
    /// be in.
    void (*applyTable)(const GainTable& table, const float* drive, const float* in, float* out,
                       int n) noexcept;
};

CINDER_KERNELS(GainKernels, gainKernels)

}  // namespace cinder
