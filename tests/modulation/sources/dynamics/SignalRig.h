#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "core/simd/InstructionSet.h"
#include "support/RealtimeGuard.h"
#include "wave/FloatParameterBus.h"
#include "wave/Producer.h"

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

/// Runs cycles of the given lengths under the rules of the audio thread, and answers with what the
/// producer gave.
inline std::vector<float> pullPieces(wave::Environment& environment, wave::Producer& producer,
                                     const std::vector<int>& pieces) {
    std::vector<float> out;
    for (int n : pieces) {
        const float* block = nullptr;
        {
            const RealtimeGuard guard;
            environment.beginBlock();
            block = producer.pull(n)->data();
            environment.render(n, 0);
        }
        out.insert(out.end(), block, block + n);
    }
    return out;
}

inline std::vector<int> evenPieces(int total, int length) {
    std::vector<int> pieces(static_cast<std::size_t>(total / length), length);
    if (total % length > 0) pieces.push_back(total % length);
    return pieces;
}

/// Sets a knob without a ramp.
inline void turn(wave::FloatParameterBus& bus, float value) {
    bus.getParameter().setValue(value, 0.0f);
}

}  // namespace cinder::test
