#pragma once

// What compiler vector types have no operator for: square root and fused product, on raw vectors.
// The only place with intrinsics. All of it lies in the namespace of one instruction set, see
// Lanes.h.

#ifndef CINDER_SIMD_SET
#error "Only kernel sources, which cinder_kernels() builds once per instruction set, use lanes"
#endif

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif

#define CINDER_LANES inline __attribute__((always_inline))

namespace cinder::simd::CINDER_SIMD_SET {

template <class T, int bytes>
struct RawVector {
    typedef T Type __attribute__((vector_size(bytes)));
    typedef T InMemory __attribute__((vector_size(bytes), aligned(alignof(T)), may_alias));
};

/// sqrt(a) and a * b + c on vectors of `bytes` bytes of T. One that is wider than the registers of
/// the set is halved until its parts fit.
template <class T, int bytes>
struct NativeOps {
    using Raw = typename RawVector<T, bytes>::Type;
    using Half = NativeOps<T, bytes / 2>;
    struct Halves {
        typename Half::Raw low, high;
    };

    static CINDER_LANES Raw sqrt(Raw a) {
        const auto x = __builtin_bit_cast(Halves, a);
        return __builtin_bit_cast(Raw, (Halves{Half::sqrt(x.low), Half::sqrt(x.high)}));
    }

    static CINDER_LANES Raw mulAdd(Raw a, Raw b, Raw c) {
        const auto x = __builtin_bit_cast(Halves, a);
        const auto y = __builtin_bit_cast(Halves, b);
        const auto z = __builtin_bit_cast(Halves, c);
        return __builtin_bit_cast(
            Raw, (Halves{Half::mulAdd(x.low, y.low, z.low), Half::mulAdd(x.high, y.high, z.high)}));
    }
};

// One row per register: element, bytes, square root, fused product.
#define CINDER_NATIVE_OPS(T, bytes, squareRoot, fused)                        \
    template <>                                                               \
    struct NativeOps<T, bytes> {                                              \
        using Raw = RawVector<T, bytes>::Type;                                \
        static CINDER_LANES Raw sqrt(Raw a) { return squareRoot; }            \
        static CINDER_LANES Raw mulAdd(Raw a, Raw b, Raw c) { return fused; } \
    };

#if defined(__AVX512F__)
CINDER_NATIVE_OPS(float, 64, _mm512_maskz_sqrt_ps(0xffff, a), _mm512_fmadd_ps(a, b, c))
CINDER_NATIVE_OPS(double, 64, _mm512_maskz_sqrt_pd(0xff, a), _mm512_fmadd_pd(a, b, c))
#endif
#if defined(__AVX2__) && defined(__FMA__)
CINDER_NATIVE_OPS(float, 32, _mm256_sqrt_ps(a), _mm256_fmadd_ps(a, b, c))
CINDER_NATIVE_OPS(double, 32, _mm256_sqrt_pd(a), _mm256_fmadd_pd(a, b, c))
CINDER_NATIVE_OPS(float, 16, _mm_sqrt_ps(a), _mm_fmadd_ps(a, b, c))
CINDER_NATIVE_OPS(double, 16, _mm_sqrt_pd(a), _mm_fmadd_pd(a, b, c))
#elif defined(__x86_64__)
CINDER_NATIVE_OPS(float, 16, _mm_sqrt_ps(a), a* b + c)
CINDER_NATIVE_OPS(double, 16, _mm_sqrt_pd(a), a* b + c)
#elif defined(__aarch64__)
CINDER_NATIVE_OPS(float, 16, vsqrtq_f32(a), vfmaq_f32(c, a, b))
CINDER_NATIVE_OPS(double, 16, vsqrtq_f64(a), vfmaq_f64(c, a, b))
#endif

#undef CINDER_NATIVE_OPS

/// A register of doubles from floats. g++ 12 has two conversions for it and a way through memory.
CINDER_LANES RawVector<double, 16>::Type widened(RawVector<float, 8>::Type a) {
    return __builtin_convertvector(a, RawVector<double, 16>::Type);
}
CINDER_LANES RawVector<double, 32>::Type widened(RawVector<float, 16>::Type a) {
#if defined(__AVX__)
    return _mm256_cvtps_pd(a);
#else
    return __builtin_convertvector(a, RawVector<double, 32>::Type);
#endif
}

/// from[places] on raw vectors, where the set has an instruction for it.
#if defined(__AVX512F__)
CINDER_LANES RawVector<float, 64>::Type gather(const float* from, RawVector<int, 64>::Type places) {
    return _mm512_mask_i32gather_ps(__m512{}, 0xffff, (__m512i)places, from, sizeof(float));
}
#define CINDER_GATHERS 1
#elif defined(__AVX2__)
CINDER_LANES RawVector<float, 32>::Type gather(const float* from, RawVector<int, 32>::Type places) {
    return _mm256_i32gather_ps(from, (__m256i)places, sizeof(float));
}
#define CINDER_GATHERS 1
#endif

#if defined(__AVX512F__)
inline constexpr int registerBytes = 64;
#elif defined(__AVX2__)
inline constexpr int registerBytes = 32;
#else
inline constexpr int registerBytes = 16;
#endif

}  // namespace cinder::simd::CINDER_SIMD_SET
