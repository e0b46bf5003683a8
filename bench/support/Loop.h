#pragma once

#include <cstddef>
#include <vector>

#include "wave/Producer.h"

namespace cinder::bench {

/// One block, over and over: `samples`, repeated to the block's length. A control that does not say
/// that it stands still takes the path of one that moves.
class Loop final : public wave::Source {
public:
    Loop(wave::Environment* environment, const std::vector<float>& samples, bool tellsConstant)
        : Source(environment) {
        for (int i = 0; i < environment->getMaxBlockSize(); ++i)
            (*ownBlock)[i] = samples[static_cast<std::size_t>(i) % samples.size()];
        setConstant(tellsConstant);
    }
    void render(wave::BasicBlock<float>*, int, unsigned) noexcept CINDER_REALTIME override {}
};

}  // namespace cinder::bench
