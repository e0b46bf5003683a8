#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "support/StageRig.h"

namespace cinder::test {

/// Plays samples along the environment's time line and stays at the last one.
class Signal final : public wave::Source {
public:
    Signal(wave::Environment* environment, std::vector<float> samples, bool tellsConstant = false)
        : Source(environment), samples(std::move(samples)) {
        setConstant(tellsConstant);
    }

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned) noexcept CINDER_REALTIME override {
        for (int i = 0; i < numSamples; ++i) {
            const std::size_t now = environment->getPosition() + static_cast<std::size_t>(i);
            (*block)[i] = samples[std::min(now, samples.size() - 1)];
        }
    }

private:
    std::vector<float> samples;
};

inline std::vector<float> pullPieces(wave::Environment& environment, wave::Producer& producer,
                                     const std::vector<int>& pieces) {
    return playPieces(environment, producer, pieces);
}

}  // namespace cinder::test
