#include "dsp/stages/ValueConverters.h"

#include <algorithm>

#include "dsp/stages/ControlKernels.h"

namespace cinder {

namespace {

/// out = offset - in.
void reflect(const float* in, float* out, int numSamples, float offset) {
    std::transform(in, in + numSamples, out, [=](float x) { return offset - x; });
}

}  // namespace

void ValueConverter::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                             int numSamples, unsigned) noexcept CINDER_REALTIME {
    setConstant(input->isConstant());
    if (!isConstant()) return convert(in->data(), out->data(), numSamples);
    convert(in->data(), out->data(), 1);
    std::fill_n(out->data(), numSamples, (*out)[0]);
}

void GainLevelConverter::convert(const float* in, float* out,
                                 int numSamples) noexcept CINDER_REALTIME {
    controlKernels->gainsOfLevels(in, out, numSamples);
}

void DBConverter::convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME {
    switch (conversion) {
        case Conversion::ToDecibels:
            return controlKernels->decibels(in, out, numSamples);
        case Conversion::ToGain:
            return controlKernels->gainsOfDecibels(in, out, numSamples);
        case Conversion::LossToDecibels:
            reflect(in, out, numSamples, 1.0f);
            controlKernels->decibels(out, out, numSamples);
            return reflect(out, out, numSamples, 0.0f);
        case Conversion::DecibelsToLoss:
            reflect(in, out, numSamples, 0.0f);
            controlKernels->gainsOfDecibels(out, out, numSamples);
            return reflect(out, out, numSamples, 1.0f);
    }
}

}  // namespace cinder
