#include "dsp/sr/EllipticDesign.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"

namespace cinder::sr {

namespace {

/// The complete elliptic integral K(m) = pi / 2 / agm(1, sqrt(1 - m)).
double quarterPeriod(double m) noexcept {
    double a = 1.0;
    double b = std::sqrt(1.0 - m);
    double c = 1.0 - b;
    for (double before = c + 1.0; c < before;) {  // until rounding stops the descent
        before = c;
        c = (a - b) / 2.0;
        const double mean = (a + b) / 2.0;
        b = std::sqrt(a * b);
        a = mean;
    }
    return halfPi / a;
}

/// sn(2 u, m): the descent starts one step short of the one that gives sn(u, m). At the points of a
/// design twice the argument lands on the same set of squares, in another order.
double ellipticSine(double u, double m) noexcept {
    constexpr int maxSteps = 15;
    constexpr double tolerance = 1e-8;
    double a[maxSteps + 1] = {1.0};
    double c[maxSteps + 1] = {std::sqrt(m)};
    double b = std::sqrt(1.0 - m);
    int last = 0;
    do {
        const double before = a[last++];
        a[last] = (before + b) / 2.0;
        c[last] = (before - b) / 2.0;
        b = std::sqrt(before * b);
    } while (last < maxSteps && c[last] / a[last] >= tolerance);

    double phi = std::ldexp(a[last] * u, last);
    for (int j = last - 1; j >= 1; --j)
        phi = (std::asin(c[j] / a[j] * std::sin(phi)) + phi) / 2.0;
    return std::sin(phi);
}

}  // namespace

void designHalfBand(int order, double edge, std::span<double> coefficients) noexcept {
    const double t = std::tan(edge / 2.0);
    const double q = 1.0 / (t * t);
    const double m = 1.0 / (q * q);
    const double quarter = quarterPeriod(m);
    double place = 1.0;  // odd multiples of a quarter period / order, behind the first quarter
    for (double& coefficient : coefficients) {
        const double s = ellipticSine((place / order + 1.0) * quarter, m);
        const double w = std::sqrt((q * q - s * s) * (1.0 - s * s));
        coefficient = (s * s + q - w) / (s * s + q + w);
        place += 2.0;
    }
    std::ranges::sort(coefficients);
}

}  // namespace cinder::sr
