// A kernel source as it must not be: it uses an inline function that lies in no set's namespace, as
// half of the standard library does. The check of the symbols has to find it.
#include "core/simd/Lanes.h"

namespace cinder {

struct Shared {
    __attribute__((noinline)) static float sharedByEveryone(float x) { return x + 1.0f; }
};

namespace simd::CINDER_SIMD_SET {

void leak(float* x);
void leak(float* x) {
    Lanes<4>(Shared::sharedByEveryone(*x)).store(x);
}

}  // namespace simd::CINDER_SIMD_SET
}  // namespace cinder
