#pragma once

#include "core/simd/KernelTable.h"

namespace cinder {

/// Decibels below full scale at which an envelope follower reads 0.
inline constexpr float followerFloorDb = -60.0f;
inline constexpr float followerOutputPerDb = 0.016666668f;  // 1 / 60

/// Where a follower stands, and how much of a distance it covers with each sample.
struct FollowerState {
    float level;
    float up;    // where the input lies above the level
    float down;  // where it lies below
};

/// Block functions of any length and alignment; out may be in.
struct EnvelopeKernels {
    /// The largest |in|; a NaN counts as 0, and so does no sample at all.
    float (*peak)(const float* in, int n) noexcept;
    /// out = max(0, 20 log10 |in| - followerFloorDb), and 0 for NaN. Never infinite.
    void (*levelsAboveFloor)(const float* in, float* out, int n) noexcept;
    /// level += (in - level) * coefficient; out = level * followerOutputPerDb. Answers with the
    /// last level.
    float (*follow)(const float* in, float* out, int n, const FollowerState& state) noexcept;
};

CINDER_KERNELS(EnvelopeKernels, envelopeKernels)

}  // namespace cinder
