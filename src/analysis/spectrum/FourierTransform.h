#pragma once

#include "analysis/spectrum/FourierPlan.h"
#include "wave/AlignedBuffer.h"

namespace cinder {

/// A transform on its way: radix 2 in time, real all through, between two buffers that change
/// places after every pass. A group of L values holds the spectrum of its L inputs, real parts at
/// 0..L / 2 and the imaginary part of line k at L / 2 + k, so that one butterfly of two groups
/// touches one value in each quarter. State   two buffers of N values, the pass in progress and how
/// far it has come; it can stop at
///         every multiple of 8 values, and the result does not depend on where it did
class FourierTransform {
public:
    explicit FourierTransform(const FourierPlan* plan) { setPlan(plan); }

    /// Starts empty: a spectrum of zeros.
    void setPlan(const FourierPlan* plan);

    /// Starts over. The N samples to transform belong here, window applied, before `run`.
    float* begin();
    /// Does `units` of work, rounded up to whole steps of 8 values. Answers whether the spectrum
    /// is there.
    bool run(int units);
    bool isFinished() const { return pass == plan->getPassCount(); }

    /// N values: the real parts of lines 0..N / 2, then the imaginary parts of lines 1..N / 2 - 1.
    const float* getResult() const { return buffers[current].data(); }

private:
    void runPass(int firstValue, int numValues);

    const FourierPlan* plan = nullptr;  // not owned
    wave::AlignedBuffer<float> buffers[2];
    int current = 0;   // the buffer that the next pass reads
    int pass = 0;      // in progress
    int position = 0;  // values it has done
};

}  // namespace cinder
