#include "core/platform/Denormals.h"

#include <doctest/doctest.h>

#include <limits>

using namespace cinder;

namespace {

// Computed here and now, not by the compiler, and not before the control word is set.
float product(float a, float b) {
    volatile float x = a, y = b;
    return x * y;
}

}  // namespace

TEST_CASE("FlushDenormalsScope: denormal results and operands are 0 inside, and only there") {
    const float smallest = std::numeric_limits<float>::min();
    const float denormal = std::numeric_limits<float>::denorm_min() * 1024.0f;
    const std::uint64_t before = platform::floatingPointControl();
    CHECK(product(smallest, 0.5f) != 0.0f);
    {
        platform::FlushDenormalsScope scope;
#if defined(__x86_64__) || defined(__aarch64__)
        CHECK(product(smallest, 0.5f) == 0.0f);
        CHECK(product(denormal, 1e30f) == 0.0f);
#endif
#if defined(__x86_64__)
        CHECK(platform::floatingPointControl() == 0x9FC0);
#endif
        CHECK(product(1.0f, 1.0f / 3.0f) == 1.0f / 3.0f);
    }
    CHECK(platform::floatingPointControl() == before);
    CHECK(product(denormal, 1e30f) != 0.0f);
}
