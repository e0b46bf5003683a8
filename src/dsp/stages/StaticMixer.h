#pragma once

#include <vector>

#include "wave/Producer.h"

namespace cinder {

/// The sum of gain * input over inputs that are set once.
/// Shape   one channel; one sample is worked out while all inputs are constant
/// State   none
class StaticMixer final : public wave::Source {
public:
    struct Input {
        float gain;
        wave::Producer* input;  // not owned; null is left out
    };

    StaticMixer(wave::Environment* environment, std::vector<Input> inputs)
        : Source(environment), inputs(std::move(inputs)) {}

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    std::vector<Input> inputs;
};

}  // namespace cinder
