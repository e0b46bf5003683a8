#include "wave/Input.h"

#include <algorithm>

#include "core/simd/Sanitise.h"

namespace cinder::wave {

void Input::render(BasicBlock<float>* block, int numSamples, unsigned) noexcept CINDER_REALTIME {
    const std::uint64_t position = environment->getPosition();
    if (position > nextPosition) {
        const auto left = static_cast<std::uint64_t>(std::max(remaining, 0));
        advance(static_cast<int>(std::min(position - nextPosition, left)));
    }
    nextPosition = position + static_cast<std::uint64_t>(numSamples);

    const int available = std::clamp(remaining, 0, numSamples);
    simd::sanitise(next, block->data(), available);
    std::fill(block->data() + available, block->data() + numSamples, 0.0f);
    advance(available);

    const bool isSilence = std::all_of(block->data(), block->data() + numSamples,
                                       [](float sample) { return sample == 0.0f; });
    if (isSilence) passOn(environment->getZeroBlock());
    setConstant(isSilence);
}

}  // namespace cinder::wave
