#pragma once

#include "core/simd/Lanes.h"

namespace cinder::simd::CINDER_SIMD_SET {

/// Two registers that go through the same steps side by side. A function that is one long chain of
/// dependent operations leaves most of the processor waiting; with a second chain beside it, the
/// one runs while the other waits.
/// Shape   L is Lanes or IntLanes; the operators are those of L for both
/// Errors  none; each lane has the bits that L would give
template <class L>
struct Pair {
    using Value = typename L::Value;
    using Mask = Pair<typename L::Mask>;
    static constexpr int numLanes = 2 * L::numLanes;

    L a, b;

    Pair() = default;
    CINDER_LANES Pair(L first, L second) : a(first), b(second) {}
    template <class Same>
    requires(__is_same(Same, Value)) CINDER_LANES Pair(Same everyLane)
        : a(everyLane), b(everyLane) {}

    static CINDER_LANES Pair load(const Value* from) {
        return {L::load(from), L::load(from + L::numLanes)};
    }
    CINDER_LANES void store(Value* to) const {
        a.store(to);
        b.store(to + L::numLanes);
    }

    friend CINDER_LANES Pair operator+(Pair x, Pair y) { return {x.a + y.a, x.b + y.b}; }
    friend CINDER_LANES Pair operator-(Pair x, Pair y) { return {x.a - y.a, x.b - y.b}; }
    friend CINDER_LANES Pair operator*(Pair x, Pair y) { return {x.a * y.a, x.b * y.b}; }
    friend CINDER_LANES Pair operator/(Pair x, Pair y) { return {x.a / y.a, x.b / y.b}; }
    friend CINDER_LANES Pair operator-(Pair x) { return {-x.a, -x.b}; }
    friend CINDER_LANES Mask operator<(Pair x, Pair y) { return {x.a < y.a, x.b < y.b}; }
    friend CINDER_LANES Mask operator>(Pair x, Pair y) { return {x.a > y.a, x.b > y.b}; }
    friend CINDER_LANES Mask operator==(Pair x, Pair y) { return {x.a == y.a, x.b == y.b}; }
    friend CINDER_LANES Pair operator&(Pair x, Pair y) { return {x.a & y.a, x.b & y.b}; }
    friend CINDER_LANES Pair operator<<(Pair x, int bits) { return {x.a << bits, x.b << bits}; }
    friend CINDER_LANES Pair operator>>(Pair x, int bits) { return {x.a >> bits, x.b >> bits}; }

    friend CINDER_LANES Pair select(Mask condition, Pair whereTrue, Pair whereFalse) {
        return {select(condition.a, whereTrue.a, whereFalse.a),
                select(condition.b, whereTrue.b, whereFalse.b)};
    }
    friend CINDER_LANES Pair keepWhere(Mask condition, Pair x) {
        return {keepWhere(condition.a, x.a), keepWhere(condition.b, x.b)};
    }
    friend CINDER_LANES Pair min(Pair x, Pair y) { return {min(x.a, y.a), min(x.b, y.b)}; }
    friend CINDER_LANES Pair max(Pair x, Pair y) { return {max(x.a, y.a), max(x.b, y.b)}; }
    friend CINDER_LANES Pair mulAdd(Pair x, Pair y, Pair z) {
        return {mulAdd(x.a, y.a, z.a), mulAdd(x.b, y.b, z.b)};
    }
    friend CINDER_LANES Pair abs(Pair x) { return {abs(x.a), abs(x.b)}; }
    friend CINDER_LANES Pair withSignOf(Pair x, Pair y) {
        return {withSignOf(x.a, y.a), withSignOf(x.b, y.b)};
    }
};

template <int N>
CINDER_LANES Pair<IntLanes<N>> bitsOf(Pair<Lanes<N>> x) {
    return {bitsOf(x.a), bitsOf(x.b)};
}
template <int N>
CINDER_LANES Pair<Lanes<N>> fromBits(Pair<IntLanes<N>> x) {
    return {fromBits(x.a), fromBits(x.b)};
}
template <int N>
CINDER_LANES Pair<Lanes<N>> toFloat(Pair<IntLanes<N>> x) {
    return {toFloat(x.a), toFloat(x.b)};
}

}  // namespace cinder::simd::CINDER_SIMD_SET
