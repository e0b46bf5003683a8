#pragma once

#include <cstddef>

#include "core/Realtime.h"

namespace cinder {

struct CurvePoint {
    float x, y;
};

/// A curve of straight pieces, rising in x and in y, and so with an inverse.
/// Range   any number; beyond its ends the curve stays where it ended
/// State   none. Exact at its points, in both directions
template <std::size_t numPoints>
struct PiecewiseCurve {
    CurvePoint points[numPoints];

    constexpr float at(float x) const noexcept CINDER_REALTIME {
        return lookUp(x, &CurvePoint::x, &CurvePoint::y);
    }
    constexpr float inverse(float y) const noexcept CINDER_REALTIME {
        return lookUp(y, &CurvePoint::y, &CurvePoint::x);
    }
    /// Odd: the curve of the magnitude, with the sign kept.
    constexpr float oddAt(float x) const noexcept CINDER_REALTIME {
        return x < 0.0f ? -at(-x) : at(x);
    }
    constexpr float oddInverse(float y) const noexcept CINDER_REALTIME {
        return y < 0.0f ? -inverse(-y) : inverse(y);
    }
    constexpr bool isRising() const {
        for (std::size_t i = 1; i < numPoints; ++i)
            if (!(points[i - 1].x < points[i].x && points[i - 1].y < points[i].y)) return false;
        return true;
    }

private:
    using Coordinate = float CurvePoint::*;

    /// In double, where the rounding of a piece cannot miss the float at its end.
    constexpr float lookUp(float in, Coordinate from,
                           Coordinate to) const noexcept CINDER_REALTIME {
        if (!(in > points[0].*from)) return points[0].*to;
        for (std::size_t i = 1; i < numPoints; ++i) {
            const CurvePoint& low = points[i - 1];
            const CurvePoint& high = points[i];
            if (in > high.*from) continue;
            const double share =
                (double{in} - double{low.*from}) / (double{high.*from} - double{low.*from});
            return static_cast<float>(double{low.*to} +
                                      share * (double{high.*to} - double{low.*to}));
        }
        return points[numPoints - 1].*to;
    }
};

template <typename... Points>
PiecewiseCurve(Points...) -> PiecewiseCurve<sizeof...(Points)>;

}  // namespace cinder
