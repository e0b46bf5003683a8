#pragma once

#include <span>

#include "core/Realtime.h"
#include "dsp/sr/CascadeKernels.h"

namespace cinder::sr {

/// Converts at most maxGroup channels by the cascade of `stages`, as many at a time as a register
/// of the processor holds. [audio]
using ConvertChannels = void(std::span<const HalfBandStage> stages,
                             std::span<const Channel> channels,
                             int numBaseSamples) noexcept CINDER_REALTIME;
ConvertChannels interpolateChannels;
ConvertChannels decimateChannels;

}  // namespace cinder::sr
