#include "dsp/stages/Router.h"

#include <algorithm>

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

Router::Router(wave::Environment* environment, int numInputs) : Source(environment) {
    for (int i = 0; i < numInputs; ++i)
        inputs.push_back(std::make_unique<Input>(environment, i == selection ? 1.0f : 0.0f));
    for (const auto& made : inputs)
        made->gain.setRest(this);
}

void Router::propertyChanged(AbstractProperty*) {
    for (int i = 0; i < static_cast<int>(inputs.size()); ++i)
        input(i).gain.setValue(i == selection ? 1.0f : 0.0f, crossfadeMs);
}

void Router::render(wave::BasicBlock<float>* block, int numSamples,
                    unsigned) noexcept CINDER_REALTIME {
    if (goesOn(environment->getPosition(), numSamples)) {
        passOn(restingOn->input->pull(numSamples));
        return setConstant(restingOn->input->isConstant());
    }
    float* const out = block->data();
    wave::Producer* whole = nullptr;  // a first input at gain 1, not copied yet
    bool started = false;

    for (const auto& owned : inputs) {
        Input& i = *owned;
        bool gainConstant = false;
        const float* const gain = i.gain.follow(numSamples, &gainConstant)->data();
        if (!i.input || (gainConstant && isZero(gain[0]))) continue;
        const float* const in = i.input->pull(numSamples)->data();
        const bool isWhole = gainConstant && isOne(gain[0]);
        if (!started && isWhole) {
            whole = i.input;
            started = true;
            continue;
        }
        if (whole) std::copy_n(whole->getOutput()->data(), numSamples, out);
        whole = nullptr;
        if (isWhole)
            simd::add(in, out, numSamples);
        else if (started)
            simd::addProduct(in, gain, out, numSamples);
        else
            simd::multiply(in, gain, out, numSamples);
        started = true;
    }

    if (!started) passOn(environment->getZeroBlock());
    if (whole) passOn(whole->getOutput());
    setConstant(!started || (whole && whole->isConstant()));
    if (whole) tryToRest(numSamples);
}

/// Behind a block that was handed on. An input may be wired or unwired later, but not the one that
/// is heard.
void Router::tryToRest(int numSamples) noexcept CINDER_REALTIME {
    restingOn = nullptr;
    for (const auto& i : inputs) {
        if (i->gain.isRamping()) return;
        const float gain = i->gain.getTarget();
        if (isOne(gain) && i->input && !restingOn)
            restingOn = i.get();
        else if (!isZero(gain))
            return;
    }
    if (restingOn) begin(environment->getPosition() + static_cast<std::uint64_t>(numSamples));
}

void Router::ended(std::uint64_t position) noexcept CINDER_REALTIME {
    for (const auto& i : inputs)
        i->gain.wasFollowedUpTo(position);
}

}  // namespace cinder
