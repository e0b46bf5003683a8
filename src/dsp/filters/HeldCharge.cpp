#include "dsp/filters/HeldCharge.h"

#include <cmath>

namespace cinder {

/// The gains at 0 and at half the sample rate and the damping give all five constants.
HeldCharge::HeldCharge(const BiquadCoefficients& s) noexcept CINDER_REALTIME {
    constexpr double criticalDamping = 2.0, smallestWeight = 1e-6;
    const double atDc = 1.0 + s.a1 + s.a2, atHalfRate = 1.0 - s.a1 + s.a2;
    const double perHalfRate = 1.0 / atHalfRate;
    g = std::sqrt(atDc * perHalfRate);
    perG = 1.0 / g;
    const double perBand = 2.0 * perHalfRate * perG;
    k = (1.0 - s.a2) * perBand;
    direct = (s.b0 - s.b1 + s.b2) * perHalfRate;
    fromLow = (s.b0 + s.b1 + s.b2) / atDc - direct;
    fromBand = (s.b0 - s.b2 - direct * (1.0 - s.a2)) * perBand;
    const double weight = fromBand * fromBand - fromBand * fromLow * k + fromLow * fromLow;
    valid = k < criticalDamping && weight > smallestWeight;
    perWeight = 1.0 / weight;
    perStep = 1.0 / (1.0 - g * k + g * g);
}

void HeldCharge::carry(const HeldCharge& next, BiquadState& state) const noexcept CINDER_REALTIME {
    if (valid && next.valid) next.recall(chargeOf(state), state);
}

/// Of the last two samples the sum of the bands and that of the lows follow from the outputs.
HeldCharge::Charge HeldCharge::chargeOf(const BiquadState& state) const noexcept CINDER_REALTIME {
    const double inputs = state.x1 + state.x2;
    const double sum = state.y1 + state.y2 - direct * inputs;
    const double difference =
        (state.y1 - state.y2 - direct * (state.x1 - state.x2)) * perG - fromBand * inputs;
    const double bands = (fromBand * sum + fromLow * difference) * perWeight;
    const double lows = ((fromLow - fromBand * k) * sum - fromBand * difference) * perWeight;
    const double band = 0.5 * (bands + g * (inputs - k * bands - lows));
    const double low = 0.5 * (lows + g * bands);
    const double high = state.x1 - k * band - low;
    return {band + g * high, low + g * band};
}

/// The two samples that lead to the charge, the last one first.
void HeldCharge::recall(Charge charge, BiquadState& state) const noexcept CINDER_REALTIME {
    const auto stepBack = [&](double x) {
        const double band = (charge.band + g * (charge.low - x)) * perStep;
        const double low = charge.low - g * band;
        const double high = x - k * band - low;
        charge = {band - g * high, low - g * band};
        return direct * x + fromBand * band + fromLow * low;
    };
    state.y1 = stepBack(state.x1);
    state.y2 = stepBack(state.x2);
}

}  // namespace cinder
