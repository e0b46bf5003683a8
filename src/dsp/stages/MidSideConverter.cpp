#include "dsp/stages/MidSideConverter.h"

namespace cinder {

void MidSideConverter::render(wave::BasicBlock<float>** blocks, int numSamples,
                              unsigned) noexcept CINDER_REALTIME {
    wave::BasicBlock<float>* const first = inputs[0]->pull(numSamples);
    wave::BasicBlock<float>* const second = inputs[1]->pull(numSamples);
    if (conversion == Conversion::None) {
        blocks[0] = first;
        blocks[1] = second;
        setOutputConstant(0, inputs[0]->isConstant());
        setOutputConstant(1, inputs[1]->isConstant());
        return;
    }
    const bool bothConstant = inputs[0]->isConstant() && inputs[1]->isConstant();
    setOutputConstant(0, bothConstant);
    setOutputConstant(1, bothConstant);
    const float* const a = first->data();
    const float* const b = second->data();
    float* const out0 = blocks[0]->data();
    float* const out1 = blocks[1]->data();
    if (conversion == Conversion::Encode) {
        for (int i = 0; i < numSamples; ++i) {
            out0[i] = (a[i] + b[i]) * 0.5f;
            out1[i] = (b[i] - a[i]) * 0.5f;
        }
    } else {
        for (int i = 0; i < numSamples; ++i) {
            out0[i] = a[i] - b[i];
            out1[i] = a[i] + b[i];
        }
    }
}

}  // namespace cinder
