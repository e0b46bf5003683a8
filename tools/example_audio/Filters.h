#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cinder::example {

/// The state-variable filter in trapezoidal form, which may be swept at every sample.
class StateVariableFilter {
public:
    struct Outputs {
        double low, band, high;
    };

    void set(double hz, double q, int rate) {
        g = std::tan(std::numbers::pi * std::min(hz / rate, 0.49));
        k = 1.0 / q;
        scale = 1.0 / (1.0 + g * (g + k));
    }

    Outputs next(double x) {
        const double high = scale * (x - (g + k) * s1 - s2);
        const double band = g * high + s1;
        const double low = g * band + s2;
        s1 = g * high + band;
        s2 = g * band + low;
        return {low, k * band, high};  // the band's peak is 1
    }

private:
    double g = 0.0, k = 1.0, scale = 1.0;
    double s1 = 0.0, s2 = 0.0;
};

/// y[n] = x[n] + a (y[n-1] - x[n]): what is heard follows a target within `seconds` by 63 %.
class Glide {
public:
    Glide(double start, double seconds, double rate)
        : y(start), a(std::exp(-1.0 / (seconds * rate))) {}

    double next(double x) { return y = x + a * (y - x); }
    double value() const { return y; }

private:
    double y;
    double a;
};

/// One formant: a resonance at `hz`, `bandwidth` wide, with a gain of 1 at 0 Hz.
class Resonator {
public:
    void set(double hz, double bandwidth, int rate) {
        const double radius = std::exp(-std::numbers::pi * bandwidth / rate);
        b2 = -radius * radius;
        b1 = 2.0 * radius * std::cos(2.0 * std::numbers::pi * hz / rate);
        a = 1.0 - b1 - b2;
    }

    double next(double x) {
        const double y = a * x + b1 * y1 + b2 * y2;
        y2 = y1;
        y1 = y;
        return y;
    }

private:
    double a = 1.0, b1 = 0.0, b2 = 0.0;
    double y1 = 0.0, y2 = 0.0;
};

}  // namespace cinder::example
