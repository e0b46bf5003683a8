#pragma once

#include "core/simd/Lanes.h"

// Elementary functions on float lanes: the single-precision polynomials of Cephes (S. L. Moshier,
// "Methods and Programs for Mathematical Functions"). None calls the library or branches, and every
// input gives an answer. The errors are the largest seen in sweeps over the whole range, in units
// of the last place (ulp).

namespace cinder::simd::CINDER_SIMD_SET {

/// Coefficients from the highest power down.
template <class L, class Number, int count>
CINDER_LANES L polynomial(const Number (&coefficients)[count], L x) {
    L sum = coefficients[0];
    for (int i = 1; i < count; ++i)
        sum = mulAdd(sum, x, L(coefficients[i]));
    return sum;
}

/// atan(x) for x from 0 to infinity, within 3 ulp.
template <class L>
CINDER_LANES L arcTan(L x) {
    constexpr float coefficients[] = {8.05374449538e-2f, -1.38776856032e-1f, 1.99777106478e-1f,
                                      -3.33329491539e-1f};
    // tan(3 pi / 8) and tan(pi / 8): beyond them the angle is taken from pi / 2 and from pi / 4.
    const auto isSteep = x > 2.4142137f;
    const auto isMiddle = x > 0.41421357f;
    const L above = select(isSteep, L(-1.0f), select(isMiddle, x - 1.0f, x));
    const L below = select(isSteep, x, select(isMiddle, x + 1.0f, L(1.0f)));
    const L start = select(isSteep, L(1.5707964f), keepWhere(isMiddle, L(0.78539819f)));
    const L t = above / below;
    const L square = t * t;
    return start + mulAdd(polynomial(coefficients, square) * square, t, t);
}

/// sin(x) for x from 0 to pi / 2, within 1.5 ulp. Of the eight octants of a turn the first is the
/// polynomial of the sine, the second that of the cosine of what is missing to pi / 2.
template <class L>
CINDER_LANES L sinOfQuarter(L x) {
    constexpr float sine[] = {-1.9515295891e-4f, 8.3321608736e-3f, -1.6666654611e-1f};
    constexpr float cosine[] = {2.443315711809948e-5f, -1.388731625493765e-3f,
                                4.166664568298827e-2f};
    const L rest = (1.5707964f - x) - 4.371139e-8f;  // pi / 2 in two parts
    const auto isSecond = x > 0.78539819f;
    const L angle = select(isSecond, rest, x);
    const L square = angle * angle;
    const L first = mulAdd(polynomial(sine, square) * square, angle, angle);
    const L second =
        mulAdd(polynomial(cosine, square) * square, square, mulAdd(square, L(-0.5f), L(1.0f)));
    return select(isSecond, second, first);
}

/// ln(x) for x from 1.1754944e-38, within 1 ulp. What is less, NaN too, counts as that, and
/// infinity as 2^128.
template <class L>
CINDER_LANES L log(L x) {
    constexpr float coefficients[] = {7.0376836292e-2f,  -1.1514610310e-1f, 1.1676998740e-1f,
                                      -1.2420140846e-1f, 1.4249322787e-1f,  -1.6668057665e-1f,
                                      2.0000714765e-1f,  -2.4999993993e-1f, 3.3333331174e-1f};
    constexpr int rootHalf = 0x3f3504f3;  // the bits of sqrt(1 / 2)
    x = max(x, L(1.1754944e-38f));
    // x = 2^exponent * mantissa with the mantissa from sqrt(1 / 2) to sqrt(2).
    const auto bits = bitsOf(x) - rootHalf;
    const L exponent = toFloat(bits >> 23);
    const L t = fromBits((bits & 0x007fffff) + rootHalf) - 1.0f;
    const L square = t * t;
    L rest = polynomial(coefficients, t) * t * square;
    rest = mulAdd(exponent, L(-2.12194440e-4f), rest);  // ln 2 in two parts
    rest = mulAdd(square, L(-0.5f), rest);
    return mulAdd(exponent, L(0.693359375f), t + rest);
}

/// exp(x), within 1.5 ulp. x is limited to +-88.37626, so that the result ends at 2.4e38 above;
/// below about -87.7 it is 0.
template <class L>
CINDER_LANES L exp(L x) {
    constexpr float coefficients[] = {1.9875691500e-4f, 1.3981999507e-3f, 8.3334519073e-3f,
                                      4.1665795894e-2f, 1.6666665459e-1f, 5.0000001201e-1f};
    // Adding it leaves the whole part, rounded to nearest, in the lowest bits of the mantissa.
    constexpr float rounding = 12582912.0f;  // 1.5 * 2^23
    constexpr int bitsOfRounding = 0x4b400000;
    x = min(max(x, L(-88.37626f)), L(88.37626f));
    const L shifted = mulAdd(x, L(1.44269504f), L(rounding));
    const L whole = shifted - rounding;
    L t = mulAdd(whole, L(-0.693359375f), x);  // ln 2 in two parts
    t = mulAdd(whole, L(2.12194440e-4f), t);
    const L power = mulAdd(polynomial(coefficients, t), t * t, t) + 1.0f;
    const auto exponent = (bitsOf(shifted) - bitsOfRounding + 127) << 23;
    return power * fromBits(exponent);
}

/// exp(x) in double, by the quotient of polynomials of the same library, within 2 ulp. x lies in
/// -700..700.
template <int N>
CINDER_LANES DoubleLanes<N> expOfSmall(DoubleLanes<N> x) {
    using L = DoubleLanes<N>;
    using Bits = BasicLanes<long long, N>;
    constexpr double above[] = {1.26177193074810590878e-4, 3.02994407707441961300e-2,
                                9.99999999999999999910e-1};
    constexpr double below[] = {3.00198505138664455042e-6, 2.52448340349684104192e-3,
                                2.27265548208155028766e-1, 2.00000000000000000009};
    constexpr double rounding = 6755399441055744.0;  // 1.5 * 2^52, see above
    constexpr long long bitsOfRounding = 0x4338000000000000;
    const L shifted = mulAdd(x, L(1.4426950408889634), L(rounding));
    const L whole = shifted - rounding;
    L t = mulAdd(whole, L(-6.93145751953125e-1), x);  // ln 2 in two parts
    t = mulAdd(whole, L(-1.42860682030941723212e-6), t);
    const L square = t * t;
    const L p = polynomial(above, square) * t;
    const L power = mulAdd(p / (polynomial(below, square) - p), L(2.0), L(1.0));
    const Bits exponent = ((Bits{(typename Bits::Raw)shifted.raw} - bitsOfRounding) + 1023LL) << 52;
    return power * L{(typename L::Raw)exponent.raw};
}

}  // namespace cinder::simd::CINDER_SIMD_SET
