#pragma once

#include "core/simd/KernelTable.h"
#include "dsp/filters/BiquadCoefficients.h"

namespace cinder {

/// Where a channel's blocks and the states of its sections lie. The output may be the input.
struct BiquadLane {
    const float* input;
    float* output;
    BiquadState* states;
};

inline constexpr int maxBiquadLanes = 2;

/// A number of samples, and for each lane the coefficients of its sections for them.
struct BiquadRun {
    int numSamples;
    const BiquadCoefficients* coefficients[maxBiquadLanes];
};

/// Runs the sections numbered from `firstSection` over the samples of all runs. What a section
/// hands to the next one, and the output, is rounded to float.
using RunBiquads = void (*)(const BiquadLane* lanes, const BiquadRun* runs, int numRuns,
                            int firstSection, int numSections) noexcept;

/// A section of two channels that share its coefficients, those of run r at
/// coefficients[r * stride].
struct BiquadStep {
    const BiquadCoefficients* coefficients;
    int stride;
    BiquadState* states[maxBiquadLanes];
};

/// Runs sections that belong to any filters, one behind the other, over two channels. The samples
/// are cut into runs of `runLength`, a multiple of four unless there is but one, and what is left.
/// The states of the lanes are not looked at.
using RunBiquadSteps = void (*)(const BiquadLane* lanes, const BiquadStep* steps, int numSteps,
                                int runLength, int numSamples) noexcept;

/// All of them give the same bits: every lane has its own state, and all fuse the same products
/// with the same sums where the set can.
struct BiquadKernels {
    RunBiquads plain;   // one channel, section after section over the whole block
    RunBiquads single;  // one channel
    RunBiquads pair;    // two channels
    RunBiquadSteps steps;
};

CINDER_KERNELS(BiquadKernels, biquadKernels)

}  // namespace cinder
