#include "processor/frame/BypassProcessor.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "core/simd/BlockMath.h"
#include "processor/frame/Channel.h"

namespace cinder {

namespace {

constexpr float fadeMs = 50.0f;
// Every latency up to here is served from what the constructor has allocated.
constexpr std::int32_t reservedLatency = 256;

bool isSame(float a, float b) {
    return std::abs(a - b) <= sameValue;
}

}  // namespace

GenericPluginProcessor::BypassProcessor::BypassProcessor(GenericPluginProcessor* owner)
    : owner(owner) {
    for (int i = 0; i < owner->getChannelCount(); ++i)
        dryDelays.push_back(
            std::make_unique<wave::Delay>(owner->getEnvironment(), reservedLatency));
    inputBlocks.fill(owner->getEnvironment()->getZeroBlock()->data());
}

void GenericPluginProcessor::BypassProcessor::setBypassed(bool nowBypassed) noexcept
    CINDER_REALTIME {
    fadeDelayCount = owner->getLatency();
    fadeDelayPending = !nowBypassed && fadeDelayCount >= 1;
    bypassed = nowBypassed;
    skipped = false;
    if (!fadeDelayPending) fade.setValue(nowBypassed ? 1.0f : 0.0f, fadeMs);
}

void GenericPluginProcessor::BypassProcessor::reset() noexcept CINDER_REALTIME {
    resetPending = true;
    updateDryDelays();
    clearDryDelays();
}

void GenericPluginProcessor::BypassProcessor::sampleRateChanged() {
    fadeClock.setSampleRate(owner->getEnvironment()->getSampleRate());
}

void GenericPluginProcessor::BypassProcessor::processBlock(
    float* const* outputs, int numChannels, int offset, int numSamples) noexcept CINDER_REALTIME {
    wave::Environment& clock = *owner->environment;
    updateDryDelays();
    clock.beginBlock();
    updateFade(numSamples);

    bool fadeRests = false;
    const float* const fadeValues = fade.follow(numSamples, &fadeRests)->data();
    fadeClock.render(numSamples, 0);
    const bool isDry = fadeRests && isSame(fadeValues[0], 1.0f);
    const bool isWet = fadeRests && isSame(fadeValues[0], 0.0f);
    const bool skip = isDry && !fadeDelayPending;
    skipped = skipped || skip;

    // An output buffer may be the input buffer of any channel. So all that is needed of the inputs
    // is taken in before the first output is written.
    if (latencyApplied > 0 || !isWet) pullInputs(numSamples);
    if (!skip) owner->getOutputBlocks(wetBlocks.data(), numChannels, numSamples);
    clock.render(numSamples, skip ? wave::Environment::skipCycle : 0);

    const float* const silence = clock.getZeroBlock()->data();
    for (int i = 0; i < numChannels; ++i) {
        if (!outputs[i]) continue;
        float* const out = outputs[i] + offset;
        const float* const wetBlock = wetBlocks[static_cast<std::size_t>(i)];
        const float* const wet = wetBlock ? wetBlock : silence;
        if (isWet) {
            std::copy_n(wet, numSamples, out);
            continue;
        }
        readDry(i, out, numSamples);
        if (!isDry) simd::crossfade(wet, out, fadeValues, out, numSamples);
    }
}

void GenericPluginProcessor::BypassProcessor::updateDryDelays() noexcept CINDER_REALTIME {
    const std::int32_t newLatency = owner->getLatency();
    if (latencyApplied == newLatency) return;
    latencyApplied = newLatency;
    for (auto& delay : dryDelays)
        if (newLatency > delay->getMaxDelay()) delay->setMaxDelay(newLatency);
    clearDryDelays();
}

void GenericPluginProcessor::BypassProcessor::clearDryDelays() noexcept CINDER_REALTIME {
    for (auto& delay : dryDelays)
        delay->clear();
}

void GenericPluginProcessor::BypassProcessor::updateFade(int numSamples) noexcept CINDER_REALTIME {
    if (resetPending) {
        resetPending = false;
        if (fadeDelayPending) fade.setValue(0.0f, wave::FloatParameter::automaticRamp);
        fadeDelayPending = false;
        fade.finishRamp();
    }
    if (!fadeDelayPending) return;
    if (fadeDelayCount > 0) {
        fadeDelayCount -= numSamples;
    } else {
        fade.setValue(0.0f, fadeMs);
        fadeDelayPending = false;
    }
}

/// The inputs of the present cycle, clean as the graph gets them, and what the delays need of them.
void GenericPluginProcessor::BypassProcessor::pullInputs(int numSamples) noexcept CINDER_REALTIME {
    const std::size_t numChannels = std::min(owner->channels.size(), dryDelays.size());
    for (std::size_t i = 0; i < numChannels; ++i) {
        inputBlocks[i] = owner->channels[i]->input.pull(numSamples)->data();
        if (latencyApplied > 0) dryDelays[i]->write(inputBlocks[i], numSamples);
    }
}

void GenericPluginProcessor::BypassProcessor::readDry(
    int channel, float* out, int numSamples) const noexcept CINDER_REALTIME {
    const auto i = static_cast<std::size_t>(channel);
    if (latencyApplied > 0)
        dryDelays[i]->read(latencyApplied, out, numSamples);
    else
        std::copy_n(inputBlocks[i], numSamples, out);
}

}  // namespace cinder
