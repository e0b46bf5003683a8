#pragma once

namespace cinder {

/// Two control values closer than this are the same value. FLT_EPSILON, 2^-23.
inline constexpr float sameValue = 1.1920929e-7f;

/// ln(10) / 20: decibels times this is the natural logarithm of the linear gain.
inline constexpr double logPerDecibel = 0.1151292546497023;

inline constexpr double halfPi = 1.5707963267948966;

}  // namespace cinder
