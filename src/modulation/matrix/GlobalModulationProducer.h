#pragma once

#include "modulation/matrix/ModulationMatrix.h"
#include "wave/Producer.h"

namespace cinder {

/// Renders one target: out[i] = clamp(base[i] + the sum of source[i] * level[i]).
/// Shape   without an active slot the base block itself, constant flag included; a constant block
///         from one sample where all that goes into it is constant
/// State   how much of the block holds a constant already; the same bits for any cut of the blocks
///         that go into it
class ModulationMatrix::GlobalModulationProducer final : public wave::Source {
public:
    GlobalModulationProducer(ModulationMatrix* matrix, Target* target)
        : Source(matrix->getEnvironment()), matrix(matrix), target(target) {}

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    ModulationMatrix* const matrix;
    Target* const target;
    int filled = 0;  // leading samples of the block that hold `filledValue`
    float filledValue = 0.0f;
};

/// What the signal path connects to: hands on what the target's producer gives.
class ModulationMatrix::GlobalTargetController final : public wave::Source {
public:
    GlobalTargetController(GlobalModulationProducer* producer, Target* target)
        : Source(producer->getEnvironment(), true), producer(producer), target(target) {}

    void render(wave::BasicBlock<float>*, int numSamples,
                unsigned) noexcept CINDER_REALTIME override {
        if (target->slots.empty()) {  // as most are, and there are many
            bool isConstant = false;
            passOn(target->base.follow(numSamples, &isConstant));
            return setConstant(isConstant);
        }
        passOn(producer->pull(numSamples));
        status = producer->getStatus();
    }
    const Target& getTarget() const { return *target; }

private:
    GlobalModulationProducer* const producer;
    Target* const target;
};

}  // namespace cinder
