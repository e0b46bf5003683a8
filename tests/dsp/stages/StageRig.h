#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "support/RealtimeGuard.h"
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

/// Runs cycles under the guard and collects what a producer gives.
inline std::vector<float> play(wave::Environment& environment, wave::Producer& producer,
                               int numSamples, int blockSize = 64) {
    std::vector<float> out(static_cast<std::size_t>(numSamples));
    RealtimeGuard guard;
    for (int done = 0; done < numSamples; done += blockSize) {
        const int n = std::min(blockSize, numSamples - done);
        environment.beginBlock();
        const float* const block = producer.pull(n)->data();
        std::copy_n(block, n, out.begin() + done);
        environment.render(n, 0);
    }
    return out;
}

}  // namespace cinder::test
