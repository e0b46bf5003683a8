#include "modulation/sources/xlfo/XLFOFreqController.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/Constants.h"
#include "core/simd/BlockMath.h"

namespace cinder {

namespace {

constexpr float barsOfMode[] = {
    1.0f,  // not in sync, so never used
    16.0f, 8.0f, 4.0f, 2.0f, 1.0f, 0.5f, 0.25f, 0.125f, 0.0625f, 0.03125f, 0.015625f,
};
static_assert(std::size(barsOfMode) == static_cast<std::size_t>(SyncMode::Bar64th) + 1);

constexpr float lowestOffset = 0.5f, highestOffset = 2.0f;

}  // namespace

XLFOFreqController::XLFOFreqController(XLFO* xlfo, wave::Producer* modulatedFrequency)
    : Producer(xlfo->getEnvironment()),
      offset(environment, 1.0f, lowestOffset, highestOffset),
      xlfo(xlfo),
      modulatedFrequency(modulatedFrequency),
      syncFrequency(environment, 0.0f, 0.0f, 1000.0f) {
    xlfo->frequency.setSource(this);
}

void XLFOFreqController::render(wave::BasicBlock<float>* block, int numSamples,
                                unsigned) noexcept CINDER_REALTIME {
    if (syncMode == SyncMode::Free) {
        passOn(modulatedFrequency->pull(numSamples));
        status = modulatedFrequency->getStatus();
        return;
    }
    const float* const hz = syncFrequency.pull(numSamples)->data();
    const float* const factor = offset.pull(numSamples)->data();
    float* const out = block->data();
    setConstant(syncFrequency.isConstant() && offset.isConstant());
    if (!isConstant()) {
        filled = 0;
        simd::multiply(hz, factor, out, numSamples);
    } else if (const float value = hz[0] * factor[0]; filled < numSamples || value != filledValue) {
        std::fill_n(out, numSamples, value);
        filled = numSamples;
        filledValue = value;
    }
    if (positionPending) followPosition(factor[0]);
}

void XLFOFreqController::followPosition(float firstOffset) noexcept CINDER_REALTIME {
    positionPending = false;
    if (offset.isConstant()) heldPosition = position;
    // Written so that a NaN counts as the lowest.
    const float factor =
        firstOffset >= lowestOffset ? std::min(firstOffset, highestOffset) : lowestOffset;
    xlfo->synchronise(heldPosition, barsPerCycle() / factor);
}

void XLFOFreqController::setTempo(float newTempo, float newPosition) noexcept CINDER_REALTIME {
    if (!std::isfinite(newTempo) || !std::isfinite(newPosition)) return;
    constexpr float usualTempo = 120.0f;
    tempo = std::abs(newTempo) > sameValue ? newTempo : usualTempo;
    xlfo->followSong(tempo, newPosition);
    if (syncMode == SyncMode::Free) return;
    position = newPosition;
    positionPending = true;
    syncFrequency.parameter.setValue(syncedHz(), wave::FloatParameter::automaticRamp);
}

void XLFOFreqController::propertyChanged(AbstractProperty*) {
    if (syncMode == SyncMode::Free || tempo == 0.0f) return;
    position = xlfo->getSongPosition();
    positionPending = true;
    syncFrequency.parameter.setValue(syncedHz(), 0.0f);
}

float XLFOFreqController::syncedHz() const noexcept CINDER_REALTIME {
    constexpr float barsASecondPerTempo = 0.004166667f;  // 1 / (60 * 4)
    return barsASecondPerTempo / barsPerCycle() * tempo;
}

float XLFOFreqController::barsPerCycle() const noexcept CINDER_REALTIME {
    const auto mode = static_cast<std::size_t>(syncMode.get());
    return barsOfMode[std::min(mode, std::size(barsOfMode) - 1)];
}

}  // namespace cinder
