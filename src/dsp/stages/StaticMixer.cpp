#include "dsp/stages/StaticMixer.h"

#include <algorithm>

#include "core/simd/BlockMath.h"

namespace cinder {

void StaticMixer::render(wave::BasicBlock<float>* block, int numSamples,
                         unsigned) noexcept CINDER_REALTIME {
    const auto connected =
        std::ranges::count_if(inputs, [](const Input& i) { return i.input != nullptr; });
    float* const out = block->data();
    float constantSum = 0.0f;
    bool allConstant = true;
    for (const auto& [gain, input] : inputs) {
        if (!input) continue;
        const wave::BasicBlock<float>* const in = input->pull(numSamples);
        if (connected == 1 && gain == 1.0f) {
            passOn(input->getOutput());
            setConstant(input->isConstant());
            return;
        }
        if (allConstant && input->isConstant()) {
            constantSum += gain * (*in)[0];
            continue;
        }
        if (allConstant) std::fill_n(out, numSamples, constantSum);
        allConstant = false;
        simd::addScaled(in->data(), gain, out, numSamples);
    }
    if (allConstant) std::fill_n(out, numSamples, constantSum);
    setConstant(allConstant);
}

}  // namespace cinder
