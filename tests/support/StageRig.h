#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "support/RealtimeGuard.h"
#include "wave/FloatParameterBus.h"
#include "wave/Producer.h"

namespace cinder::test {

/// Plays a signal from its start, and counts its renders.
class SignalSource final : public wave::Source {
public:
    SignalSource(wave::Environment* environment, std::vector<float> samples)
        : Source(environment), samples(std::move(samples)) {}
    /// A constant, marked as one.
    SignalSource(wave::Environment* environment, float value)
        : Source(environment), samples(1, value) {
        setConstant(true);
    }

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned) noexcept CINDER_REALTIME override {
        ++renders;
        const auto start = static_cast<std::size_t>(environment->getPosition());
        for (int i = 0; i < numSamples; ++i)
            (*block)[i] =
                samples[isConstant() ? 0 : (start + static_cast<std::size_t>(i)) % samples.size()];
    }

    int renders = 0;

private:
    std::vector<float> samples;
};

inline std::vector<int> evenPieces(int total, int length) {
    std::vector<int> pieces(static_cast<std::size_t>(total / length), length);
    if (total % length > 0) pieces.push_back(total % length);
    return pieces;
}

/// Runs cycles of these lengths under the guard and collects what a producer gives.
inline std::vector<float> playPieces(wave::Environment& environment, wave::Producer& producer,
                                     const std::vector<int>& pieces) {
    const int total = std::accumulate(pieces.begin(), pieces.end(), 0);
    std::vector<float> out(static_cast<std::size_t>(total));
    auto end = out.begin();
    const RealtimeGuard guard;
    for (const int n : pieces) {
        environment.beginBlock();
        end = std::copy_n(producer.pull(n)->data(), n, end);
        environment.render(n, 0);
    }
    return out;
}

inline std::vector<float> play(wave::Environment& environment, wave::Producer& producer,
                               int numSamples, int blockSize = 64) {
    return playPieces(environment, producer, evenPieces(numSamples, blockSize));
}

/// Sets a knob without a ramp.
inline void turn(wave::FloatParameterBus& bus, float value) {
    bus.getParameter().setValue(value, 0.0f);
}

}  // namespace cinder::test
