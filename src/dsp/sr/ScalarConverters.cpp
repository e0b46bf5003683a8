#include "dsp/sr/ScalarConverters.h"

#include <algorithm>
#include <cstddef>

namespace cinder::sr {

namespace {

void allpass(float c, float& x1, float& y1, float* block, int n) noexcept {
    for (int i = 0; i < n; ++i) {
        const float x = block[i];
        const float y = c * x + x1 - c * y1;
        x1 = x;
        y1 = y;
        block[i] = y;
    }
}

/// Both branches in place; answers with the state behind that of the stage.
float* runBranches(const HalfBandStage& stage, float* state, float* ofA, float* ofB,
                   int n) noexcept {
    for (int i = 0; i < stage.numCoefficients; ++i) {
        const bool onA = i % 2 == 0;
        float* const last = state + (onA ? 0 : 2);
        allpass(stage.coefficients[i], last[0], last[1], onA ? ofA : ofB, n);
        if (!onA || i + 1 == stage.numCoefficients) state += 4;
    }
    return state;
}

std::int32_t workSize(IIRConverterStyle* style) {
    return style->getEnvironment()->getMaxBlockSize() * style->getMaxFactor() / 2;
}

}  // namespace

ScalarInterpolator::ScalarInterpolator(IIRConverterStyle* style)
    : IIRConverter(style), ofA(workSize(style)) {}

bool ScalarInterpolator::process(const float* input, float* output,
                                 int count) noexcept CINDER_REALTIME {
    const auto stages = style->getStages();
    if (stages.empty()) return false;
    std::copy_n(input, count, output);
    float* slot = state.data();
    for (int n = count; const HalfBandStage& stage : stages) {
        std::copy_n(output, n, ofA.data());
        slot = runBranches(stage, slot, ofA.data(), output, n);
        for (std::ptrdiff_t i = n - 1; i >= 0; --i) {  // backward: B lies in the output
            output[2 * i + 1] = output[i];
            output[2 * i] = ofA[i];
        }
        n *= 2;
    }
    return true;
}

ScalarDecimator::ScalarDecimator(IIRConverterStyle* style)
    : IIRConverter(style), ofA(workSize(style)), ofB(workSize(style)) {}

bool ScalarDecimator::process(const float* input, float* output,
                              int count) noexcept CINDER_REALTIME {
    const auto stages = style->getStages();
    if (stages.empty()) return false;
    float* slot = state.data();
    const float* in = input;
    for (int k = static_cast<int>(stages.size()) - 1; k >= 0; --k) {
        const int n = count << k;
        const float last = in[2 * n - 1];
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            ofB[i] = 0.5f * (i > 0 ? in[2 * i - 1] : lastInputs[k]);
            ofA[i] = 0.5f * in[2 * i];  // never ahead of what is read, where A is the input
        }
        lastInputs[k] = last;
        slot = runBranches(stages[static_cast<std::size_t>(k)], slot, ofA.data(), ofB.data(), n);
        float* const sum = k > 0 ? ofA.data() : output;
        for (int i = 0; i < n; ++i)
            sum[i] = ofA[i] + ofB[i];
        in = sum;
    }
    return true;
}

void ScalarDecimator::reset() noexcept CINDER_REALTIME {
    IIRConverter::reset();
    std::ranges::fill(lastInputs, 0.0f);
}

}  // namespace cinder::sr
