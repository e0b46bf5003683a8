#pragma once

#include <span>

namespace cinder::sr {

/// Coefficients of an elliptic half-band filter as two branches of first-order allpass sections:
///   H(z) = (A(z^2) + B(z^2) / z) / 2,   section: (c + 1/z) / (1 + c/z)
/// Shape   odd `order`; (order - 1) / 2 coefficients, ascending, dealt alternately to A and B
/// Range   0 < edge < pi / 2, in radians at the filter's rate: the passband ends there and the
///         stopband begins at pi - edge. A lower order or a wider edge leaves more in the stopband
/// Source  R. A. Valenzuela, A. G. Constantinides, "Digital signal processing schemes for efficient
///         interpolation and decimation", 1983; the elliptic function by the arithmetic-geometric
///         mean as in M. Abramowitz, I. Stegun, "Handbook of Mathematical Functions", 16.4
void designHalfBand(int order, double edge, std::span<double> coefficients) noexcept;  ///< [any]

}  // namespace cinder::sr
