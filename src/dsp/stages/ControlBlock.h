#pragma once

#include <cmath>

#include "core/Constants.h"
#include "core/Realtime.h"

namespace cinder {

/// Whether a control stands at 0: what it controls is then left out.
inline bool isZero(float value) noexcept CINDER_REALTIME {
    return std::abs(value) <= sameValue;
}

/// Whether a control stands at 1: what it controls is then handed on as it is.
inline bool isOne(float value) noexcept CINDER_REALTIME {
    return std::abs(value - 1.0f) <= sameValue;
}

}  // namespace cinder
