#include "LanesTestKernels.h"

#include "core/simd/LaneMath.h"
#include "core/simd/MapBlock.h"

namespace cinder::test::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;

constexpr int numValues = 16;

template <int N, class T, class Operation>
void atWidth(const T* a, const T* b, const T* c, T* out, Operation operation) {
    using L = BasicLanes<T, N>;
    for (int i = 0; i < numValues; i += N)
        operation(L::load(a + i), L::load(b + i), L::load(c + i)).store(out + i);
}

template <auto operation>
void floats(const float* a, const float* b, const float* c, float* out) noexcept {
    atWidth<4>(a, b, c, out, operation);
    atWidth<8>(a, b, c, out + numValues, operation);
    atWidth<16>(a, b, c, out + 2 * numValues, operation);
}

void doubles(const double* a, const double* b, const double* c, double* out) noexcept {
    const auto fused = [](auto x, auto y, auto z) { return mulAdd(x, y, z); };
    atWidth<2>(a, b, c, out, fused);
    atWidth<4>(a, b, c, out + numValues, fused);
    atWidth<8>(a, b, c, out + 2 * numValues, fused);
}

void interleaved(const float* a, const float* b, const float*, float* out) noexcept {
    for (int i = 0; i < numValues; i += 4) {
        const auto x = Lanes<4>::load(a + i);
        const auto y = Lanes<4>::load(b + i);
        shuffle<0, 4, 1, 5, 2, 6, 3, 7>(x, y).store(out + 2 * i);
    }
}

template <auto function>
void block(const float* in, float* out, int n) noexcept {
    mapBlock(in, out, n, function);
}

}  // namespace

constinit const LanesTestKernels lanesTestKernels = {
    .mulAdd = floats<[](auto a, auto b, auto c) { return mulAdd(a, b, c); }>,
    .squareRoot = floats<[](auto a, auto, auto) { return sqrt(abs(a)); }>,
    .smaller = floats<[](auto a, auto b, auto) { return min(a, b); }>,
    .larger = floats<[](auto a, auto b, auto) { return max(a, b); }>,
    .chosen = floats<[](auto a, auto b, auto c) { return select(a < b, keepWhere(a > b, c), c); }>,
    .copiedSign = floats<[](auto a, auto b, auto) { return withSignOf(abs(a), b); }>,
    .truncated = floats<[](auto a, auto, auto) {
        // What lies outside the range of int is kept out, NaN among it.
        return toFloat(truncate(min(max(a, decltype(a)(-1e6f)), decltype(a)(1e6f))));
    }>,
    .minusZero = floats<[](auto a, auto, auto) { return decltype(a)(-0.0f); }>,
    .interleaved = interleaved,
    .mulAddDouble = doubles,
#if defined(__FMA__) || defined(__aarch64__)
    .hasFusedProduct = true,
#else
    .hasFusedProduct = false,
#endif
    .arcTan = block<[](Wide x) { return arcTan(x); }>,
    .sinOfQuarter = block<[](Wide x) { return sinOfQuarter(x); }>,
    .log = block<[](Wide x) { return log(x); }>,
    .exp = block<[](Wide x) { return exp(x); }>,
};

}  // namespace cinder::test::CINDER_SIMD_SET
