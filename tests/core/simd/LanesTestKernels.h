#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::test {

/// One operation of the layer at 2, 4, 8 and 16 lanes, each on the same 16 values of a, b and c;
/// the results of all widths follow one another.
struct LanesTestKernels {
    using Floats = void (*)(const float* a, const float* b, const float* c, float* out) noexcept;
    using Block = void (*)(const float* in, float* out, int n) noexcept;

    Floats mulAdd, squareRoot, smaller, larger, chosen, copiedSign, truncated, minusZero;
    Floats interleaved;
    void (*mulAddDouble)(const double* a, const double* b, const double* c, double* out) noexcept;
    bool hasFusedProduct;

    // The elementary functions, for a block.
    Block arcTan, sinOfQuarter, log, exp;
};

CINDER_KERNELS(LanesTestKernels, lanesTestKernels)

}  // namespace cinder::test
