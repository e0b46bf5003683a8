#pragma once

#include "core/simd/KernelTable.h"

namespace cinder::simd {

/// Where a step of an XLFO goes, and the glide that takes it there.
struct Glide {
    float from, to;
    float amount;  // the step's own; the global one is added to it
};

/// The way through a step at an even pace: sample j stands at
/// t = (phase + (count + j) * increment - origin) * pace, from 0 to 1, as a float.
struct EvenPace {
    double phase, count, increment, origin, pace;
};

/// The value at t. A glide covers the last share g of the step,
///     g = amount + global, within (0.0002 * frequency)^2 .. 1
///     u = (t - (1 - g)) / g, at most 1
///     y = curve(u) * (to - from) + from where t is above 1 - g, else from.
/// The lower limit of g rounds off the corners of what is fast enough to be heard as a tone. The
/// upper one of u matters where g is so small that a float can't resolve it beside 1.
///
/// One kernel for each curve, in the order of GlideCurve: u, u^2, sqrt(u), sin^2 of u's quarter
/// turn.
struct GlideKernels {
    static constexpr int numCurves = 4;

    /// Frequency and global glide stand still, so g is known.
    void (*gliding[numCurves])(const EvenPace& pace, const Glide& glide, float g, float* out,
                               int n) noexcept;
    /// t of n samples.
    void (*times)(const EvenPace& pace, float* t, int n) noexcept;
    /// What each sample adds to the phase: the frequency within 0..5000 over the rate, and the way
    /// that the offset, within -100..100, has gone since the sample before. A NaN is 0.
    void (*increments)(const float* frequency, double rate, double* increments, int n) noexcept;
    void (*jumps)(const float* offset, float before, double* jumps, int n) noexcept;
    /// Everything moves. A NaN counts as a frequency of 0, or as no glide.
    void (*moving[numCurves])(const float* t, const float* frequency, const float* globalGlide,
                              const Glide& glide, float* out, int n) noexcept;
};

CINDER_KERNELS(GlideKernels, glideKernels)

}  // namespace cinder::simd
