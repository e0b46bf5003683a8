#pragma once

#include "core/Realtime.h"

namespace cinder {

/// A drive as the stages read it, 0 to 1: tables wrap round beyond, and lengths that follow from it
/// have to fit their buffers. A NaN is 0. [audio]
inline float limitedDrive(float drive) noexcept CINDER_REALTIME {
    if (!(drive > 0.0f)) return 0.0f;
    return drive < 1.0f ? drive : 1.0f;
}

}  // namespace cinder
