#pragma once

#include <complex>

#include "core/Realtime.h"

namespace cinder {

/// An analog filter that can be asked for its response. Frequencies are in radians per sample, with
/// no warping of the axis.
class AnalogFilterPrototypeBase {
public:
    virtual std::complex<double> getResponse(double frequency) noexcept CINDER_REALTIME = 0;
    /// Sets (a whole filter) or multiplies (a section) `magnitudes`.
    virtual void getMagnitudeSquared(const float* frequencies, float* magnitudes,
                                     int count) noexcept CINDER_REALTIME = 0;
    virtual double getMagnitudeSquared(double frequency) noexcept CINDER_REALTIME = 0;
    /// The frequency that s = j stands for, and its inverse.
    virtual void setFrequency(double frequency,
                              double inverseFrequency) noexcept CINDER_REALTIME = 0;

protected:
    ~AnalogFilterPrototypeBase() = default;
};

}  // namespace cinder
