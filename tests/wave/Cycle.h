#pragma once

#include <initializer_list>
#include <vector>

#include "support/RealtimeGuard.h"
#include "wave/Producer.h"

namespace cinder::test {

/// One cycle as the processor drives it: a new block, the pulls of the outputs, then the sinks. All
/// of it under a guard.
inline void runCycle(wave::Environment& environment, int numSamples,
                     std::initializer_list<wave::Producer*> pulled = {}, unsigned flags = 0) {
    const RealtimeGuard guard;
    environment.beginBlock();
    for (wave::Producer* producer : pulled)
        producer->pull(numSamples);
    environment.render(numSamples, flags);
}

/// Samples that tell where they stand on the time line: sample i of a block is its position + i,
/// counted from 1 so that none is silence. Exact up to 2^24. Writes down how it was rendered.
class ClockSource final : public wave::Source {
public:
    struct Visit {
        int numSamples;
        unsigned flags;
        bool operator==(const Visit&) const = default;
    };

    explicit ClockSource(wave::Environment* environment, bool hasState = true)
        : Source(environment) {
        if (hasState) makeResettable();
    }

    void render(wave::BasicBlock<float>* block, int numSamples, unsigned flags) noexcept override {
        {
            const RealtimePause notes;
            visits.push_back({numSamples, flags});
        }
        for (int i = 0; i < numSamples; ++i)
            block->data()[i] =
                static_cast<float>(environment->getPosition()) + 1.0f + static_cast<float>(i);
    }
    void reset() noexcept override { ++resets; }
    void setStatus(std::uint32_t newStatus) { status = newStatus; }

    std::vector<Visit> visits;
    int resets = 0;
};

}  // namespace cinder::test
