#pragma once

#include "dsp/sr/IIRConverter.h"

namespace cinder::sr {

/// The slow, obvious twins of IIRInterpolator and IIRDecimator: one section of one stage after the
/// other through work blocks, product and sum rounded apart. The tests' reference and the
/// benchmarks' denominator; the state lies where the fast ones keep it.
class ScalarInterpolator final : public IIRConverter {
public:
    explicit ScalarInterpolator(IIRConverterStyle* style);

    bool process(const float* input, float* output, int count) noexcept CINDER_REALTIME override;

private:
    wave::BasicBlock<float> ofA;
};

class ScalarDecimator final : public IIRConverter {
public:
    explicit ScalarDecimator(IIRConverterStyle* style);

    bool process(const float* input, float* output, int count) noexcept CINDER_REALTIME override;
    void reset() noexcept CINDER_REALTIME override;

private:
    wave::BasicBlock<float> ofA;
    wave::BasicBlock<float> ofB;
    float lastInputs[maxStages] = {};
};

}  // namespace cinder::sr
