#pragma once

#include "core/Realtime.h"

namespace cinder {

// Block functions for the curves that the styles use, in the widest vectors of this processor.
// Each computes clip of its curve for every sample.
//
// Shape   any n from 0, any alignment; out may be in
// Range   in anything; 0 and NaN give 0, infinity the limit of the curve, see Clip.h. The file
//         docs/curves.md has the largest difference to clip for each of them
// State   none: the same bits for any cut of the block; the last bits may differ between
//         processors with and without a fused product

using BlockFunction = void (*)(const float* in, float* out, int n) noexcept;
using PowerBlockFunction = void (*)(const float* in, float* out, int n, float power,
                                    float negativeScale) noexcept;

void vectorClipArcTanFast(const float* in, float* out,
                          int n) noexcept CINDER_REALTIME;  ///< [audio]
void vectorClipDivAbsFast(const float* in, float* out, int n) noexcept CINDER_REALTIME;
void vectorClipSineFast(const float* in, float* out, int n) noexcept CINDER_REALTIME;
void vectorClipPolynomeOrder2Fast(const float* in, float* out, int n) noexcept CINDER_REALTIME;
void vectorClipPolynomeOrder3Fast(const float* in, float* out, int n) noexcept CINDER_REALTIME;
void vectorClipTubeFast(const float* in, float* out, int n) noexcept CINDER_REALTIME;
void vectorClipRectifyFast(const float* in, float* out, int n) noexcept CINDER_REALTIME;

/// With power and negativeScale, by way of logarithm and exponential.
void vectorClipArcTanPBFast(const float* in, float* out, int n, float power,
                            float negativeScale) noexcept CINDER_REALTIME;  ///< [audio]
void vectorClipDivAbsPBFast(const float* in, float* out, int n, float power,
                            float negativeScale) noexcept CINDER_REALTIME;

}  // namespace cinder
