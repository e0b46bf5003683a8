#include "dsp/filters/Bilinear.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cinder {

float angularFrequency(float log2Hz, float sampleRate) noexcept CINDER_REALTIME {
    const double hz = std::max(std::exp2(static_cast<double>(log2Hz)), 1.0);
    return static_cast<float>(2.0 * std::numbers::pi * hz / static_cast<double>(sampleRate));
}

float bilinearTangent(float angularFrequency) noexcept CINDER_REALTIME {
    constexpr float highest = 3.1315928f;  // pi - 0.01
    return std::tan(std::min(angularFrequency, highest) / 2.0f);
}

BiquadCoefficients mapBilinear(const AnalogFilterPrototype::BiquadPrototype& section,
                               double tangent) noexcept CINDER_REALTIME {
    const double k = tangent;
    const auto& n = section.getNumerator();
    const auto& d = section.getDenominator();
    if (section.isFirstOrder()) {
        const double m = 1.0 / (k * d.s0 + d.s1);
        return {(k * n.s0 + n.s1) * m, (k * n.s0 - n.s1) * m, 0.0, (k * d.s0 - d.s1) * m, 0.0};
    }
    const double e = k * d.s1;
    const double f = k * n.s1;
    const double a = k * k * d.s0;
    const double b = k * k * n.s0;
    const double c = a + d.s2;
    const double h = n.s2 + b;
    const double m = 1.0 / (c + e);
    return {(h + f) * m, (b - n.s2) * (2.0 * m), (h - f) * m, (a - d.s2) * (2.0 * m), (c - e) * m};
}

}  // namespace cinder
