#include "core/simd/SanitiseKernels.h"

#include "core/simd/MapBlock.h"
#include "core/simd/Sanitise.h"

namespace cinder::simd::CINDER_SIMD_SET {

namespace {

void sanitise(const float* in, float* out, int n) noexcept {
    mapBlock(
        in, out, n, [](Wide x) __attribute__((always_inline)) {
            const Wide magnitude = abs(x);
            const Wide limited = withSignOf(min(magnitude, Wide(loudestSample)), x);
            return keepWhere(magnitude <= __FLT_MAX__, limited);  // neither infinite nor NaN
        });
}

}  // namespace

constinit const SanitiseKernels sanitiseKernels = {sanitise};

}  // namespace cinder::simd::CINDER_SIMD_SET
