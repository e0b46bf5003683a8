#pragma once

#include "core/Realtime.h"
#include "dsp/filters/BiquadCoefficients.h"

namespace cinder {

/// A section as two trapezoidal integrators, of which its state can be told apart from its
/// coefficients:
///     band = g integral(high), low = g integral(band), high = x - k band - low
///     y = direct x + fromBand band + fromLow low
/// What the integrators hold is the charge of the circuit. Of a section in direct form the same
/// outputs weigh the more the lower its frequency: one that drops from 18 kHz to 40 Hz within a few
/// samples would answer with hundreds of times its input. Where the charge goes on instead, a
/// change by itself never adds energy.
/// Range   sections with a pair of complex poles; others are not `isValid`, and nothing is carried
/// Source  A. Wishnick, "Time-varying filters for musical applications", 2014
class HeldCharge {
public:
    HeldCharge() = default;
    explicit HeldCharge(const BiquadCoefficients& section) noexcept CINDER_REALTIME;

    bool isValid() const { return valid; }
    /// Outputs such as the section `next` would have given with the charge that this one has.
    void carry(const HeldCharge& next, BiquadState& state) const noexcept CINDER_REALTIME;

private:
    struct Charge {
        double band, low;
    };
    Charge chargeOf(const BiquadState& state) const noexcept CINDER_REALTIME;
    void recall(Charge charge, BiquadState& state) const noexcept CINDER_REALTIME;

    double g = 1.0, k = 0.0;
    double direct = 0.0, fromBand = 0.0, fromLow = 0.0;
    double perG = 1.0, perWeight = 1.0, perStep = 1.0;
    bool valid = false;
};

}  // namespace cinder
