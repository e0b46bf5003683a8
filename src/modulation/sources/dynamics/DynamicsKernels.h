#pragma once

#include "core/simd/KernelTable.h"

namespace cinder {

/// The controls of a static curve that stand still over a block, see Detector.
struct CurveControls {
    float thresholdDb;
    float ratio;
    float kneeWidthDb;
    float rangeDb;
};

/// Block functions of any length and alignment; out may be in.
/// A level falls where it lies at least this far above the input.
inline constexpr double capacitorFallsFrom = -1.1920928955078125e-07;

/// Two capacitors with standing times: their levels, and the coefficients of rise and fall.
struct CapacitorPair {
    double level[2], up[2], down[2];
};

struct DynamicsKernels {
    /// out = 20 log10 |in|, at least -180, and -180 for NaN.
    void (*levelsToDecibels)(const float* in, float* out, int n) noexcept;
    /// The change in dB for a level in dB, one function per purpose of a Detector.
    void (*changes[3])(const float* levelDb, float* out, int n, const CurveControls&) noexcept;
    /// out = exp(in * logPerDb), and 1 minus that where `removed`.
    void (*changesToGains)(const float* in, float* out, int n, float logPerDb,
                           bool removed) noexcept;
    /// out = |in|; 0 for NaN.
    void (*magnitudes)(const float* in, float* out, int n) noexcept;
    /// out[i] = the largest of history[i] to history[i + window]; history holds window + n values
    /// and `slidingMaximumPadding` more, and is used up.
    void (*slidingMaximum)(float* history, int window, float* out, int n) noexcept;
    /// The smoothing of Capacitor for two channels; the same bits.
    void (*smoothPair)(CapacitorPair& pair, const float* const* in, float* const* out,
                       int n) noexcept;
};

inline constexpr int slidingMaximumPadding = 16;

CINDER_KERNELS(DynamicsKernels, dynamicsKernels)

}  // namespace cinder
