#pragma once

#include "core/Realtime.h"

// The arithmetic that mixing, gains and fades are made of, block by block, in the widest lanes.
//
// Shape   any n from 0, any alignment; an output may be the same block as any input
// State   none; the same bits for any cut of the block
// Errors  none

namespace cinder::simd {

/// out = in * gain. [audio]
void scale(const float* in, float gain, float* out, int n) noexcept CINDER_REALTIME;
/// out = a * b. [audio]
void multiply(const float* a, const float* b, float* out, int n) noexcept CINDER_REALTIME;
/// sum = sum + in. [audio]
void add(const float* in, float* sum, int n) noexcept CINDER_REALTIME;
/// sum = in * gain + sum. [audio]
void addScaled(const float* in, float gain, float* sum, int n) noexcept CINDER_REALTIME;
/// sum = a * b + sum. [audio]
void addProduct(const float* a, const float* b, float* sum, int n) noexcept CINDER_REALTIME;
/// sum = the sum of in[k] * gain[k] over `numInputs` blocks; 0 for none. In may not hold sum.
/// [audio]
void sumScaled(const float* const* in, const float* gain, int numInputs, float* sum,
               int n) noexcept CINDER_REALTIME;
/// out = (to - from) * fade + from. [audio]
void crossfade(const float* from, const float* to, const float* fade, float* out,
               int n) noexcept CINDER_REALTIME;

}  // namespace cinder::simd
