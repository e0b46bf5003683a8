#pragma once

#include "core/simd/NativeOps.h"

// Included by kernel sources alone. cinder_kernels() compiles such a source once per instruction
// set and names the set in CINDER_SIMD_SET; everything a kernel uses lies in the namespace of that
// name, so that the linker can never take a function built for a newer processor into the code that
// must run on any.

namespace cinder::simd::CINDER_SIMD_SET {

template <int bytes>
struct IntOfSize;
template <>
struct IntOfSize<4> {
    using Type = int;
};
template <>
struct IntOfSize<8> {
    using Type = long long;
};

/// N values of T in one vector, with the operators of T lane by lane.
/// Shape   N is a power of two; more lanes than a register holds are several registers, whose
///         comparisons g++ 12 takes apart lane by lane: where it matters, see Pair.h
/// Range   that of T; comparisons give integer lanes, all ones where true and 0 where false
/// Errors  none; results are the same bits at every N, and on every set but for mulAdd, which
///         rounds once where the set has a fused product and twice where it has not
template <class T, int N>
struct BasicLanes {
    static_assert(N > 1 && (N & (N - 1)) == 0);

    using Value = T;
    static constexpr int numLanes = N;
    static constexpr int bytes = N * static_cast<int>(sizeof(T));
    using Raw = typename RawVector<T, bytes>::Type;
    using InMemory = typename RawVector<T, bytes>::InMemory;
    using Native = NativeOps<T, bytes>;
    using Mask = BasicLanes<typename IntOfSize<sizeof(T)>::Type, N>;

    Raw raw;

    BasicLanes() = default;
    CINDER_LANES BasicLanes(Raw lanes) : raw(lanes) {}
    /// The same value in every lane. Exactly a T: an int or a double beside float lanes is an
    /// error.
    template <class Same>
    requires(__is_same(Same, T)) CINDER_LANES BasicLanes(Same everyLane)
        : raw(everyLane - Raw{}) {}  // x - 0 is x, also for -0

    // Any alignment. Not memcpy: g++ 12 then keeps arrays of lanes in memory.
    static CINDER_LANES BasicLanes load(const T* from) {
        return {*reinterpret_cast<const InMemory*>(from)};
    }
    CINDER_LANES void store(T* to) const { *reinterpret_cast<InMemory*>(to) = raw; }

    CINDER_LANES T operator[](int lane) const { return raw[lane]; }

    friend CINDER_LANES BasicLanes operator+(BasicLanes a, BasicLanes b) { return {a.raw + b.raw}; }
    friend CINDER_LANES BasicLanes operator-(BasicLanes a, BasicLanes b) { return {a.raw - b.raw}; }
    friend CINDER_LANES BasicLanes operator*(BasicLanes a, BasicLanes b) { return {a.raw * b.raw}; }
    friend CINDER_LANES BasicLanes operator/(BasicLanes a, BasicLanes b) { return {a.raw / b.raw}; }
    friend CINDER_LANES BasicLanes operator-(BasicLanes a) { return {-a.raw}; }
    CINDER_LANES BasicLanes& operator+=(BasicLanes b) { return *this = *this + b; }
    CINDER_LANES BasicLanes& operator-=(BasicLanes b) { return *this = *this - b; }
    CINDER_LANES BasicLanes& operator*=(BasicLanes b) { return *this = *this * b; }

    friend CINDER_LANES Mask operator<(BasicLanes a, BasicLanes b) { return mask(a.raw < b.raw); }
    friend CINDER_LANES Mask operator>(BasicLanes a, BasicLanes b) { return mask(a.raw > b.raw); }
    friend CINDER_LANES Mask operator<=(BasicLanes a, BasicLanes b) { return mask(a.raw <= b.raw); }
    friend CINDER_LANES Mask operator>=(BasicLanes a, BasicLanes b) { return mask(a.raw >= b.raw); }
    friend CINDER_LANES Mask operator==(BasicLanes a, BasicLanes b) { return mask(a.raw == b.raw); }
    friend CINDER_LANES Mask operator!=(BasicLanes a, BasicLanes b) { return mask(a.raw != b.raw); }

    // Of integer lanes only.
    friend CINDER_LANES BasicLanes operator&(BasicLanes a, BasicLanes b) { return {a.raw & b.raw}; }
    friend CINDER_LANES BasicLanes operator|(BasicLanes a, BasicLanes b) { return {a.raw | b.raw}; }
    friend CINDER_LANES BasicLanes operator^(BasicLanes a, BasicLanes b) { return {a.raw ^ b.raw}; }
    friend CINDER_LANES BasicLanes operator~(BasicLanes a) { return {~a.raw}; }
    friend CINDER_LANES BasicLanes operator<<(BasicLanes a, int bits) { return {a.raw << bits}; }
    friend CINDER_LANES BasicLanes operator>>(BasicLanes a, int bits) { return {a.raw >> bits}; }

    /// whereTrue where the condition holds, otherwise whereFalse.
    friend CINDER_LANES BasicLanes select(Mask condition, BasicLanes whereTrue,
                                          BasicLanes whereFalse) {
        return {condition.raw ? whereTrue.raw : whereFalse.raw};
    }
    /// a < b ? a : b, so b where either is NaN: a limit goes first to let NaN through, last to stop
    /// it. One instruction; likewise max.
    friend CINDER_LANES BasicLanes min(BasicLanes a, BasicLanes b) {
        return {a.raw < b.raw ? a.raw : b.raw};
    }
    friend CINDER_LANES BasicLanes max(BasicLanes a, BasicLanes b) {
        return {a.raw > b.raw ? a.raw : b.raw};
    }
    friend CINDER_LANES BasicLanes sqrt(BasicLanes a) { return {Native::sqrt(a.raw)}; }
    /// a * b + c, fused where the set can.
    friend CINDER_LANES BasicLanes mulAdd(BasicLanes a, BasicLanes b, BasicLanes c) {
        return {Native::mulAdd(a.raw, b.raw, c.raw)};
    }

private:
    static CINDER_LANES Mask mask(auto compared) { return {(typename Mask::Raw)compared}; }
};

template <int N>
using Lanes = BasicLanes<float, N>;
template <int N>
using DoubleLanes = BasicLanes<double, N>;
template <int N>
using IntLanes = BasicLanes<int, N>;

/// As many floats as one register of the set holds: 4, 8 or 16.
inline constexpr int wideLanes = registerBytes / static_cast<int>(sizeof(float));
using Wide = Lanes<wideLanes>;

/// The same bits as lanes of another type.
template <int N>
CINDER_LANES IntLanes<N> bitsOf(Lanes<N> a) {
    return {(typename IntLanes<N>::Raw)a.raw};
}
template <int N>
CINDER_LANES Lanes<N> fromBits(IntLanes<N> a) {
    return {(typename Lanes<N>::Raw)a.raw};
}

template <int N>
CINDER_LANES Lanes<N> toFloat(IntLanes<N> a) {
    return {__builtin_convertvector(a.raw, typename Lanes<N>::Raw)};
}
template <int N>
CINDER_LANES DoubleLanes<N> toDouble(Lanes<N> a) {
    return {widened(a.raw)};
}
/// Towards zero. The caller keeps every lane inside the range of int: NaN is none of them.
template <int N>
CINDER_LANES IntLanes<N> truncate(Lanes<N> a) {
    return {__builtin_convertvector(a.raw, typename IntLanes<N>::Raw)};
}

/// from[places], lane by lane.
CINDER_LANES Wide gather(const float* from, IntLanes<wideLanes> places) {
#if defined(CINDER_GATHERS)
    return {gather(from, places.raw)};
#else
    float gathered[wideLanes];
    for (int lane = 0; lane < wideLanes; ++lane)
        gathered[lane] = from[places[lane]];
    return Wide::load(gathered);
#endif
}

template <int N>
CINDER_LANES Lanes<N> abs(Lanes<N> a) {
    return fromBits(bitsOf(a) & 0x7fffffff);
}
/// The magnitude of a with the sign bit of b; a is not negative.
template <int N>
CINDER_LANES Lanes<N> withSignOf(Lanes<N> a, Lanes<N> b) {
    return fromBits(bitsOf(a) | (bitsOf(b) & ~0x7fffffff));
}
/// a where the condition holds, otherwise +0.
template <int N>
CINDER_LANES Lanes<N> keepWhere(IntLanes<N> condition, Lanes<N> a) {
    return {condition.raw ? a.raw : typename Lanes<N>::Raw{}};
}

/// Lanes of a (numbered from 0) and of b (numbered from N) in the order given.
template <int... order, class T, int N>
CINDER_LANES BasicLanes<T, static_cast<int>(sizeof...(order))> shuffle(BasicLanes<T, N> a,
                                                                       BasicLanes<T, N> b) {
    return {__builtin_shufflevector(a.raw, b.raw, order...)};
}

}  // namespace cinder::simd::CINDER_SIMD_SET
