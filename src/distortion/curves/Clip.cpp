#include "distortion/curves/Clip.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Constants.h"

namespace cinder {

namespace {

// 0 below a signal of -12.5, 0.5 for none: the fold is a polynomial of order 5 in its square.
double softFold(double s) noexcept {
    // With f = s * 0.04 + 0.5 this is f^2 - 0.25 as a product: no digits are lost next to 0.
    const double e = std::max(s * 0.04, -0.5);
    const double g = std::clamp(e * (e + 1.0) * 2.4038448, -1.0, 1.0);
    return 15.0 * g - 5.0 * g * g * g;
}

// c, from the magnitude b, which is finite, and the sign.
double shape(int curve, double b, double sign) noexcept {
    const double m = std::min(b, 1.0);
    switch (curve) {
        case arcTangentCurve:
            return std::atan(b * halfPi) / halfPi;
        case logisticCurve:
            return std::tanh(0.5 * b);  // the same, without the loss near 0
        case divisionByMagnitudeCurve:
            return b / (b + 1.0);
        case rootCurve:
            return b / std::hypot(b, 1.0);
        case hyperbolicTangentCurve:
            return std::tanh(b);
        case sineCurve:
            return std::sin(m * halfPi);
        case polynomeOrder2Curve:
        case rectifyCurve:
            return 2.0 * m - m * m;
        case polynomeOrder3Curve:
            return m * (1.5 - 0.5 * m * m);
        case polynomeOrder4Curve:
            return (4.0 * m - m * m * m * m) / 3.0;
        case polynomeOrder5Curve:
            return m * (1.25 - 0.25 * m * m * m * m);
        case tubeCurve:
            return sign * tube(sign * b);
        case softFoldCurve:
            return sign * softFold(sign * b);
        default:
            return b;
    }
}

}  // namespace

double tube(double v) noexcept CINDER_REALTIME {
    if (v < -1.754818) return -1.175451;
    if (v < -0.08905) {
        const double t = v + 0.032847;
        const double w2 = (1.0 + t) * (1.0 + t);
        const double w4 = w2 * w2;
        return (w4 * w4 * w4 + t / 3.0 - 1.0) * 0.75 - 0.01;
    }
    if (v < 0.320018) return 3.9375 * v - 6.153 * v * v;
    return 0.62993276;
}

float clip(float x, int curve, float power, float negativeScale) noexcept CINDER_REALTIME {
    const double sign = x > 0.0f ? 1.0 : -1.0;
    const double k = x > 0.0f ? 1.0 : static_cast<double>(negativeScale);
    const double u = sign * static_cast<double>(x) * k;
    if (!(u > 0.0)) return 0.0f;  // 0, NaN, or a negative side of no size
    if (curve < 0 || curve >= numCurves || curve == noCurve) return x;

    const double p = static_cast<double>(power);
    const bool isPlain = power == 1.0f;
    const double b = isPlain ? u : std::pow(u, p);
    const double c = shape(curve, std::min(b, std::numeric_limits<double>::max()), sign);
    const double magnitude = (isPlain ? c : std::pow(c, 1.0 / p)) / k;
    return static_cast<float>(curve == rectifyCurve ? magnitude : magnitude * sign);
}

}  // namespace cinder
