#include "distortion/curves/Spline.h"

#include <cmath>
#include <limits>

namespace cinder {

namespace {

double bezier(double p0, double p1, double p2, double p3, double t) {
    const double s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

}  // namespace

double Spline::evaluate(double x) const {
    constexpr double closeInX = std::numeric_limits<double>::epsilon();
    constexpr double closeInY = 0.0001;
    constexpr int mostHalvings = 60;  // after these the ends are neighbours
    const auto y = [this](double t) {
        return bezier(points.y0, points.y1, points.y2, points.y3, t);
    };
    double low = 0.0, high = 1.0, t = 0.5;
    for (int i = 0; i < mostHalvings; ++i) {
        const double found = bezier(0.0, points.x1, points.x2, 1.0, t);
        if (std::fabs(found - x) <= closeInX || std::fabs(y(high) - y(low)) <= closeInY) break;
        (found < x ? low : high) = t;
        t = 0.5 * (low + high);
    }
    return y(t);
}

}  // namespace cinder
