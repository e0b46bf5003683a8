#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::test {

/// One operation of the layer at 2, 4, 8 and 16 lanes, each on the same 16 values of a, b and c;
/// the results of all widths follow one another.
struct LanesTestKernels {
    void (*mulAdd)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*mulAddDouble)(const double* a, const double* b, const double* c, double* out) noexcept;
    void (*squareRoot)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*smaller)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*larger)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*chosen)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*copiedSign)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*truncated)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*broadcast)(const float* a, const float* b, const float* c, float* out) noexcept;
    void (*interleaved)(const float* a, const float* b, const float* c, float* out) noexcept;
    bool hasFusedProduct;

    // The elementary functions, for a block.
    void (*arcTan)(const float* in, float* out, int n) noexcept;
    void (*sinOfQuarter)(const float* in, float* out, int n) noexcept;
    void (*log)(const float* in, float* out, int n) noexcept;
    void (*exp)(const float* in, float* out, int n) noexcept;
};

CINDER_KERNELS(LanesTestKernels, lanesTestKernels)

}  // namespace cinder::test
