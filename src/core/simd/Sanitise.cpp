#include "core/simd/Sanitise.h"

#include "core/simd/SanitiseKernels.h"

namespace cinder::simd {

void sanitise(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    sanitiseKernels->sanitise(in, out, n);
}

}  // namespace cinder::simd
