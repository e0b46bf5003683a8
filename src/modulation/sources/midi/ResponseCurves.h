#pragma once

#include "core/Realtime.h"
#include "modulation/vocabulary/SourceParameters.h"

namespace cinder {

/// f(x), odd and rising: f(-x) = -f(x), f(0) = 0, f(1) = 1 but for rounding.
using ResponseFunction = float (*)(float x) noexcept CINDER_REALTIME;

/// The function of a curve; a number that is no curve's is linear. [any]
ResponseFunction responseFunctionOf(ResponseCurve curve) noexcept CINDER_REALTIME;

}  // namespace cinder
