#pragma once

#include <algorithm>
#include <deque>
#include <vector>

#include "modulation/matrix/GlobalModulationProducer.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder::test {

/// A matrix of the product's shape, with a signal for every variant of every source: every third a
/// constant, the others moving. The second variants are signals of their own.
struct MatrixRig {
    static constexpr int period = 97;

    explicit MatrixRig(std::uint64_t seed = 1) {
        Rng rng(seed);
        for (int i = 0; i < numModulationSources * numSourceVariants; ++i) {
            if (i % 3 == 0)
                sources.emplace_back(&environment, static_cast<float>(rng.real(-1.0, 1.0)));
            else
                sources.emplace_back(&environment, rng.noise(period));
            matrix.setSourceVariant(i % numModulationSources, i / numModulationSources,
                                    &sources.back());
        }
        for (int i = 0; i < numModulationTargets; ++i)
            matrix.getTargetController(i);
    }

    void connect(int slot, int source, int target, float level = 0.5f) {
        matrix.setTargetValue(shape.levelTargetOf(slot), level);
        matrix.setSlotSource(slot, source);
        matrix.setSlotTarget(slot, target);
    }
    bool isActive(int slot) const { return matrix.getSlot(slot).isActive(); }
    /// Runs cycles of these lengths under the guard, and collects what all targets give.
    std::vector<std::vector<float>> play(const std::vector<int>& pieces) {
        std::vector<std::vector<float>> out(static_cast<std::size_t>(shape.targetCount));
        for (auto& samples : out)
            samples.reserve(
                static_cast<std::size_t>(std::accumulate(pieces.begin(), pieces.end(), 0)));
        const RealtimeGuard guard;
        for (const int n : pieces) {
            environment.beginBlock();
            for (int i = 0; i < shape.targetCount; ++i) {
                const float* block = matrix.getTargetController(i)->pull(n)->data();
                auto& samples = out[static_cast<std::size_t>(i)];
                samples.insert(samples.end(), block, block + n);
            }
            environment.render(n, 0);
        }
        return out;
    }

    wave::Environment environment;
    ModulationMatrixShape shape = ModulationMatrixShape::ofVocabulary();
    std::deque<SignalSource> sources;  // variant by variant
    ModulationMatrix matrix{&environment, &shape};
};

}  // namespace cinder::test
