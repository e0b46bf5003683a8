#include "wave/Input.h"

#include <algorithm>

namespace cinder::wave {

void Input::render(BasicBlock<float>* block, int numSamples, unsigned) noexcept CINDER_REALTIME {
    const int available = next ? std::clamp(remaining, 0, numSamples) : 0;
    std::copy_n(next, available, block->data());
    std::fill(block->data() + available, block->data() + numSamples, 0.0f);
    if (next) next += available;
    remaining -= available;
}

}  // namespace cinder::wave
