#pragma once

#include "core/simd/KernelTable.h"

namespace cinder {

struct CurveKernels {
    using Block = void(const float* in, float* out, int n) noexcept;
    using PowerBlock = void(const float* in, float* out, int n, float power,
                            float negativeScale) noexcept;
    Block* arcTan;
    Block* divAbs;
    Block* sine;
    Block* polynomeOrder2;
    Block* polynomeOrder3;
    Block* tube;
    Block* rectify;
    PowerBlock* arcTanPower;
    PowerBlock* divAbsPower;
};

CINDER_KERNELS(CurveKernels, curveKernels)

}  // namespace cinder
