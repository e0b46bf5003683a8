#pragma once

#include "core/Realtime.h"

namespace cinder::sr {

/// The coefficients of a half-band stage, ascending. Even ones stand on branch A, odd ones on B,
/// and sections of equal rank are computed in pairs. What lies behind the last coefficient is 0.
struct HalfBandStage {
    static constexpr int maxCoefficients = 6;

    int numCoefficients = 0;
    float coefficients[maxCoefficients] = {};

    constexpr int getNumPairs() const noexcept CINDER_REALTIME { return (numCoefficients + 1) / 2; }
    /// With an odd number the last section stands alone on A; it takes the place of a pair.
    constexpr bool endsAlone() const noexcept CINDER_REALTIME { return numCoefficients % 2 != 0; }
};

/// The stages of a cascade stand in a row from the one at twice the base rate upward.
inline constexpr int maxStages = 3;

}  // namespace cinder::sr
