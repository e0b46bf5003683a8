#include "dsp/stages/Mixer.h"

#include <algorithm>
#include <cmath>

#include "core/simd/BlockMath.h"
#include "dsp/stages/ControlBlock.h"

namespace cinder {

namespace {

constexpr float smallestDivisor = 1e-9f;

/// out = f(out, in * gain), sample by sample.
template <typename Function>
void forEachSample(const float* in, const float* gain, float* out, int numSamples, Function f) {
    for (int i = 0; i < numSamples; ++i)
        out[i] = f(out[i], in[i] * gain[i]);
}

bool startsFromMagnitude(Mixer::Operation operation) {
    using enum Mixer::Operation;
    return operation == Peak || operation == RatioLimited || operation == RatioFloored ||
           operation == RatioHeld;
}

}  // namespace

Mixer::Mixer(wave::Environment* environment, int numInputs)
    : Source(environment), inputCount(numInputs, this) {
    resizeInputs();
}

void Mixer::connect(int index, wave::Producer* producer) {
    input(index).input = producer;
    updateFastSum();
}

void Mixer::setGainLimits(float minimum, float maximum) {
    gainMinimum = minimum;
    gainMaximum = maximum;
}

void Mixer::propertyChanged(AbstractProperty* property) {
    if (property == &inputCount) resizeInputs();
    updateFastSum();
}

void Mixer::resizeInputs() {
    const auto wanted = static_cast<std::size_t>(std::max(inputCount.get(), 0));
    while (inputs.size() > wanted)
        inputs.pop_back();
    while (inputs.size() < wanted)
        inputs.push_back(std::make_unique<Input>(environment, gainMinimum, gainMaximum));
}

void Mixer::updateFastSum() {
    fastSum = operation == Operation::Sum && inputs.size() <= mostFastInputs &&
              std::ranges::all_of(inputs, [](const auto& i) { return i->input != nullptr; });
}

void Mixer::render(wave::BasicBlock<float>* block, int numSamples,
                   unsigned) noexcept CINDER_REALTIME {
    if (fastSum)
        renderFastSum(block->data(), numSamples);
    else
        renderGeneral(block->data(), numSamples);
}

/// Controls before inputs: what is faded out is not pulled, so what stands behind it does not run.
void Mixer::renderFastSum(float* out, int numSamples) noexcept CINDER_REALTIME {
    const float* constantInputs[mostFastInputs];
    float constantGains[mostFastInputs];
    int numConstant = 0;
    Input* moving[mostFastInputs];
    int numMoving = 0;
    bool allConstant = true;
    wave::Producer* only = nullptr;

    for (const auto& owned : inputs) {
        Input& i = *owned;
        const float gain = *i.gain.pull(numSamples)->data();
        const bool gainConstant = i.gain.isConstant();
        if (gainConstant && isZero(gain)) continue;
        const wave::BasicBlock<float>* const in = i.input->pull(numSamples);
        allConstant = allConstant && gainConstant && i.input->isConstant();
        if (gainConstant) {
            only = i.input;
            constantInputs[numConstant] = in->data();
            constantGains[numConstant++] = gain;
        } else {
            moving[numMoving++] = &i;
        }
    }

    if (numConstant + numMoving == 0) {
        passOn(environment->getZeroBlock());
    } else if (numConstant == 1 && numMoving == 0 && isOne(constantGains[0])) {
        passOn(only->getOutput());
    } else {
        simd::sumScaled(constantInputs, constantGains, numConstant, out, numSamples);
        for (int k = 0; k < numMoving; ++k)
            simd::addProduct(moving[k]->input->getOutput()->data(),
                             moving[k]->gain.pull(numSamples)->data(), out, numSamples);
    }
    setConstant(allConstant);
}

void Mixer::renderGeneral(float* out, int numSamples) noexcept CINDER_REALTIME {
    bool isFirst = true;
    bool allConstant = true;
    for (const auto& i : inputs) {
        if (!i->input) continue;
        const float* const in = i->input->pull(numSamples)->data();
        const float* const gain = i->gain.pull(numSamples)->data();
        allConstant = allConstant && i->input->isConstant() && i->gain.isConstant();
        combine(in, gain, out, numSamples, isFirst);
        isFirst = false;
    }
    if (isFirst)
        passOn(environment->getZeroBlock());
    else if (operation == Operation::RatioHeld)
        lastRatio = out[numSamples - 1];
    setConstant(allConstant);
}

void Mixer::combine(const float* in, const float* gain, float* out, int numSamples,
                    bool isFirst) noexcept CINDER_REALTIME {
    const auto run = [&](auto f) { forEachSample(in, gain, out, numSamples, f); };
    if (isFirst) {
        if (startsFromMagnitude(operation))
            for (int i = 0; i < numSamples; ++i)
                out[i] = std::abs(in[i]) * gain[i];
        else
            for (int i = 0; i < numSamples; ++i)
                out[i] = in[i] * gain[i];
        return;
    }
    switch (operation) {
        case Operation::Sum:
            return run([](float y, float c) { return y + c; });
        case Operation::Difference:
            return run([](float y, float c) { return y - c; });
        case Operation::Peak:
            return run([](float y, float c) { return std::max(y, std::abs(c)); });
        case Operation::Product:
            return run([](float y, float c) { return y * c; });
        case Operation::RatioLimited:
            return run([](float y, float c) {
                return c == 0.0f ? 0.0f : std::clamp(y / std::abs(c), 0.0f, 1.0f);
            });
        case Operation::RatioFloored:
            return run([](float y, float c) {
                return std::max(y, smallestDivisor) / std::max(std::abs(c), smallestDivisor);
            });
        case Operation::RatioHeld:
            return run([held = lastRatio](float y, float c) {
                return std::abs(c) > smallestDivisor ? y / std::abs(c) : held;
            });
        case Operation::Maximum:
            return run([](float y, float c) { return std::max(y, c); });
        case Operation::Minimum:
            return run([](float y, float c) { return std::min(y, c); });
    }
}

}  // namespace cinder
