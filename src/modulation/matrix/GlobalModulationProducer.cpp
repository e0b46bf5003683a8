#include "modulation/matrix/GlobalModulationProducer.h"

#include <algorithm>

#include "modulation/matrix/ModulationKernels.h"

namespace cinder {

void ModulationMatrix::GlobalModulationProducer::render(wave::BasicBlock<float>* block,
                                                        int numSamples,
                                                        unsigned) noexcept CINDER_REALTIME {
    bool isConstantSum = false;
    wave::BasicBlock<float>* const base = target->base.follow(numSamples, &isConstantSum);

    // A pull may end up in this very function for another target, so the lists, which all targets
    // share, are filled when everything has been pulled.
    int numProducts = 0;
    for (const Slot* slot : target->slots) {
        wave::Producer* const source = matrix->producerOf(*slot, *target);
        if (!source) continue;
        wave::Producer* const level = matrix->levelOf(*slot);
        source->pull(numSamples);
        level->pull(numSamples);
        isConstantSum = isConstantSum && source->isConstant() && level->isConstant();
        ++numProducts;
    }
    setConstant(isConstantSum);
    if (numProducts == 0) {
        passOn(base);
        return;
    }
    const float** sources = matrix->sourceBlocks.data();
    const float** levels = matrix->levelBlocks.data();
    for (const Slot* slot : target->slots) {
        wave::Producer* const source = matrix->producerOf(*slot, *target);
        if (!source) continue;
        *sources++ = source->getOutput()->data();
        *levels++ = matrix->levelOf(*slot)->getOutput()->data();
    }
    float* const out = block->data();
    simd::modulationKernels->sumProducts(
        base->data(), matrix->sourceBlocks.data(), matrix->levelBlocks.data(), numProducts,
        target->clampMinimum, target->clampMaximum, out, isConstantSum ? 1 : numSamples);
    if (!isConstantSum) {
        filled = 0;
    } else if (filled < numSamples || out[0] != filledValue) {
        std::fill_n(out, numSamples, out[0]);
        filled = numSamples;
        filledValue = out[0];
    }
}

}  // namespace cinder
