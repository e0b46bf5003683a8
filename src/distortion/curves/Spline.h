#pragma once

#include "distortion/curves/FunctionTable.h"

namespace cinder {

/// A cubic Bezier curve from (0, y0) to (1, y3) through the control points (x1, y1) and (x2, y2).
struct SplinePoints {
    double y0, x1, y1, x2, y2, y3;
};

/// The curves of the envelope generator's four sections: attack, falling decay, rising decay,
/// release. Up, they start level and end steep; down, the other way round.
inline constexpr int envelopeTableSize = 4096;
inline constexpr SplinePoints envelopeSplines[] = {
    // y0    x1    y1    x2    y2    y3
    {0.0, 0.20, 0.00, 0.40, 0.75, 1.0},
    {1.0, 0.19, 0.55, 0.42, 0.00, 0.0},
    {0.0, 0.20, 0.00, 0.40, 0.75, 1.0},
    {1.0, 0.19, 0.55, 0.42, 0.00, 0.0},
};

/// The curve as a function y(x) of x from 0 to 1.
/// Shape   x1 and x2 from 0 to 1, so that x(t) rises; y anything
/// Range   the parameter t is found by bisection, until x(t) is x or y is known within 1e-4
class Spline final : public FunctionTableFunction {
public:
    explicit Spline(const SplinePoints& splinePoints) : points(splinePoints) {}

    double evaluate(double x) const override;

private:
    SplinePoints points;
};

}  // namespace cinder
