#pragma once

#include "core/Realtime.h"
#include "dsp/filters/AnalogFilterPrototype.h"
#include "dsp/filters/BiquadCoefficients.h"

namespace cinder {

/// Radians per sample of a frequency in log2 of Hz, at least 1 Hz. [any]
float angularFrequency(float log2Hz, float sampleRate) noexcept CINDER_REALTIME;

/// tan(w / 2), where the bilinear transform puts the frequency w. Beyond 0.4984 of the sample rate
/// it stays at 200, so that every design is finite and stable. [any]
float bilinearTangent(float angularFrequency) noexcept CINDER_REALTIME;

/// The section with s = (1 - 1/z) / (1 + 1/z) / tangent. [any]
BiquadCoefficients mapBilinear(const AnalogFilterPrototype::BiquadPrototype& section,
                               double tangent) noexcept CINDER_REALTIME;

}  // namespace cinder
