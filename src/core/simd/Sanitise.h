#pragma once

#include "core/Realtime.h"

namespace cinder::simd {

/// The loudest sample that may enter the graph: +60 dBFS. Nothing a recording or a chain of gains
/// means reaches it; a filter fed with more could overflow to infinity and stay there for good.
inline constexpr float loudestSample = 1000.0f;

/// out = in, with NaN and infinity replaced by 0 and magnitudes limited to loudestSample.
/// Shape   any n from 0, any alignment; out may be in
/// Range   in anything; out finite, |out| <= loudestSample; a clean sample keeps its bits
/// State   none
void sanitise(const float* in, float* out, int n) noexcept CINDER_REALTIME;  ///< [audio]

}  // namespace cinder::simd
