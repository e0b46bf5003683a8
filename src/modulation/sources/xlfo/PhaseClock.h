#pragma once

#include <algorithm>
#include <cmath>

#include "core/Realtime.h"

namespace cinder {

/// The place of x on a circle of 1, in [0, 1). What is no number counts as 0.
inline double wrapped(double x) noexcept CINDER_REALTIME {
    if (x >= 0.0 && x < 1.0) return x;
    const double fraction = x >= 1.0 && x < 2.0 ? x - 1.0 : x - std::trunc(x);
    // -1e-17 + 1 is 1, which lies on no circle.
    const double place = fraction < 0.0 ? fraction + 1.0 : fraction;
    return place < 1.0 ? place : 0.0;
}

/// Two positions in a cycle that go on at the same pace: phase[n] = phase + n * increment, and base
/// likewise. Counting samples instead of adding up increments keeps the error below one rounding
/// however long it runs, and makes the place of a later sample a matter of one product.
///
/// Range   increment >= 0, finite
/// State   the positions where the pace last changed, and the samples since then; the same bits for
///         any cut of the block
class PhaseClock {
public:
    double phase() const noexcept CINDER_REALTIME { return start + count * increment; }
    double base() const noexcept CINDER_REALTIME { return startBase + count * increment; }
    double phaseAfter(int numSamples) const noexcept CINDER_REALTIME {
        return start + (count + static_cast<double>(numSamples)) * increment;
    }
    /// The samples until the phase is at `end` or beyond, which it isn't yet; 1..limit. The caller
    /// asks often at one pace, so it brings the inverse of the increment.
    int samplesUntil(double end, double inverseIncrement,
                     int limit) const noexcept CINDER_REALTIME {
        if (phaseAfter(limit) < end) return limit;
        const double estimate = (end - start) * inverseIncrement - count;
        int n = static_cast<int>(std::clamp(estimate, 1.0, static_cast<double>(limit)));
        while (n > 1 && phaseAfter(n - 1) >= end)
            --n;
        while (n < limit && phaseAfter(n) < end)
            ++n;
        return n;
    }

    void set(double newPhase, double newBase) noexcept CINDER_REALTIME {
        start = newPhase;
        startBase = newBase;
        count = 0.0;
    }
    void setIncrement(double newIncrement) noexcept CINDER_REALTIME {
        if (newIncrement == increment) return;
        set(phase(), base());
        increment = newIncrement;
    }
    void advance(int numSamples) noexcept CINDER_REALTIME {
        count += static_cast<double>(numSamples);
    }

    double start = 0.0, startBase = 0.0;
    double count = 0.0;  // samples since then
    double increment = 0.0;
};

}  // namespace cinder
