#pragma once

#include <cstdint>

#include "core/Realtime.h"

namespace cinder {

/// The curves of the distortion; any other number behaves like noCurve.
enum Curve : std::int32_t {
    arcTangentCurve,
    logisticCurve,
    divisionByMagnitudeCurve,
    rootCurve,
    hyperbolicTangentCurve,
    noCurve,
    sineCurve,
    polynomeOrder2Curve,
    polynomeOrder3Curve,
    polynomeOrder4Curve,
    polynomeOrder5Curve,
    tubeCurve,
    softFoldCurve,
    rectifyCurve,
};

inline constexpr const char* curveNames[] = {
    "arc tangent",
    "logistic",
    "division by magnitude",
    "root",
    "hyperbolic tangent",
    "none",
    "sine",
    "polynome of order 2",
    "polynome of order 3",
    "polynome of order 4",
    "polynome of order 5",
    "tube",
    "soft fold",
    "rectify",
};
inline constexpr int numCurves = 14;
static_assert(sizeof(curveNames) / sizeof(curveNames[0]) == numCurves && rectifyCurve == 13);

/// The reference shaping function: sign(x) / k * c(u^power)^(1 / power), with k = 1 above 0 and
/// negativeScale below, u = k |x|, and c the curve. Rectify is positive on both sides.
///
///   arc tangent            2 / pi * atan(pi / 2 b)        sine            sin(pi / 2 m)
///   logistic               2 / (1 + exp(-b)) - 1          polynome of 2   2 m - m^2
///   division by magnitude  b / (b + 1)                    polynome of 3   m (1.5 - 0.5 m^2)
///   root                   b / sqrt(b^2 + 1)              polynome of 4   4/3 m - 1/3 m^4
///   hyperbolic tangent     tanh(b)                        polynome of 5   m (1.25 - 0.25 m^4)
///   none                   b                              rectify         2 m - m^2
///
/// where b = u^power and m = min(b, 1). Tube and soft fold are asymmetric and stand in the source.
///
/// Shape   one sample; computed in double precision and rounded once
/// Range   x anything; power above 0; negativeScale from 0, and 0 silences the negative side.
///         0 and NaN give 0. Infinity gives the limit of the curve: 1 / k for most, infinity for
///         none, 0.62993276 and -1.175451 for tube and 10 and -7.92922 for soft fold (power and
///         negativeScale 1). Denormals are values like any other
/// State   none
float clip(float x, int curve, float power,
           float negativeScale) noexcept CINDER_REALTIME;  ///< [any]

/// The tube curve, for power and negativeScale of 1 the result of clip: a steep parabola around 0,
/// which stops at 0.62993276 above, and a polynomial of order 12 that stops at -1.175451 below.
/// [any]
double tube(double v) noexcept CINDER_REALTIME;

}  // namespace cinder
