#include "core/simd/BlockMath.h"

#include "core/simd/BlockMathKernels.h"

namespace cinder::simd {

void scale(const float* in, float gain, float* out, int n) noexcept CINDER_REALTIME {
    blockMathKernels->scale(in, gain, out, n);
}

void multiply(const float* a, const float* b, float* out, int n) noexcept CINDER_REALTIME {
    blockMathKernels->multiply(a, b, out, n);
}

void add(const float* in, float* sum, int n) noexcept CINDER_REALTIME {
    blockMathKernels->add(in, sum, n);
}

void addScaled(const float* in, float gain, float* sum, int n) noexcept CINDER_REALTIME {
    blockMathKernels->addScaled(in, gain, sum, n);
}

void addProduct(const float* a, const float* b, float* sum, int n) noexcept CINDER_REALTIME {
    blockMathKernels->addProduct(a, b, sum, n);
}

void sumScaled(const float* const* in, const float* gain, int numInputs, float* sum,
               int n) noexcept CINDER_REALTIME {
    blockMathKernels->sumScaled(in, gain, numInputs, sum, n);
}

void crossfade(const float* from, const float* to, const float* fade, float* out,
               int n) noexcept CINDER_REALTIME {
    blockMathKernels->crossfade(from, to, fade, out, n);
}

}  // namespace cinder::simd
