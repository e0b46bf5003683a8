#include <algorithm>
#include <atomic>
#include <cmath>

#include "core/Constants.h"
#include "modulation/sources/xlfo/XLFO.h"

// The row of steps, where it lies in the cycle, and what moves the place in the cycle from outside.

namespace cinder {

namespace {

/// To the nearest of the 25 points from -1 to 1.
float snapped(float value) {
    const int k = std::clamp(static_cast<int>((value + 1.0f) * 12.0f + 0.5f), 0, 24);
    return 2.0f * static_cast<float>(k) * 0.041666668f - 1.0f;
}

}  // namespace

void XLFO::Step::propertyChanged(AbstractProperty* property) {
    if (property == &value || property == &random || property == &snap) isResolved = false;
}

void XLFO::propertyChanged(AbstractProperty* property) {
    if (property == &numSteps || property == &balance) layOutSteps();
}

void XLFO::layOutSteps() noexcept CINDER_REALTIME {
    const double oldShare = firstShare;
    stepsInUse = std::clamp(numSteps.get(), 1, maxSteps);
    firstShare = static_cast<double>(balance.get());
    if (std::abs(firstShare - oldShare) > static_cast<double>(sameValue)) keepPlaceIn(oldShare);

    const double n = stepsInUse;
    const double first = 2.0 * firstShare / n, second = 2.0 * (1.0 - firstShare) / n;
    double start = 0.0;
    for (int i = 0; i < stepsInUse; ++i) {
        Step& step = steps[static_cast<std::size_t>(i)];
        step.isMiddle = 2 * i + 1 == stepsInUse;
        step.start = start;
        if (i + 1 == stepsInUse)
            step.end = 1.0;
        else if (2 * (i + 1) < stepsInUse)
            step.end = static_cast<double>(i + 1) * first;
        else
            step.end = (static_cast<double>(i + 1) - n / 2.0) * second + firstShare;
        step.pace = 1.0 / (step.end - step.start);
        start = step.end;
    }
}

/// A point of the wave form keeps its place in its half when the balance moves. Rounding must not
/// take it into the other half; the balance itself lies in 0.0001..0.9999, so both have a length.
void XLFO::keepPlaceIn(double oldShare) noexcept CINDER_REALTIME {
    const double phase = wrapped(clock.phase());
    const double offset = phase - clock.base();
    double moved = 0.0;
    if (phase < oldShare) {
        moved = std::min(firstShare * phase / oldShare, std::nextafter(firstShare, 0.0));
    } else {
        const auto t = static_cast<float>((phase - oldShare) / (1.0 - oldShare));
        const double part = static_cast<double>(std::min(t, std::nextafter(1.0f, 0.0f)));
        moved = part * (1.0 - firstShare) + firstShare;
    }
    moved = wrapped(moved);
    clock.set(moved, wrapped(moved - offset));
}

float XLFO::valueOf(int index) noexcept CINDER_REALTIME {
    Step& step = steps[static_cast<std::size_t>(index)];
    if (step.isResolved) return step.resolvedValue;
    float value = step.value;
    if (step.random && stepsInUse > 1) {
        const int before = (index + stepsInUse - 1) % stepsInUse;
        value = randomAfter(steps[static_cast<std::size_t>(before)].resolvedValue);
    } else if (step.random) {
        value = step.nextRandom;
        step.nextRandom = randomAfter(value);
    }
    step.resolvedValue = step.snap ? snapped(value) : value;
    step.isResolved = true;
    return step.resolvedValue;
}

/// What a step glides to. A lone step comes after itself: with the value it will draw next, or,
/// where it is fixed, with the one it has.
float XLFO::valueBehind(int index) noexcept CINDER_REALTIME {
    if (stepsInUse > 1) return valueOf((index + 1) % stepsInUse);
    const Step& step = steps[static_cast<std::size_t>(index)];
    if (!step.random) return step.resolvedValue;
    return step.snap ? snapped(step.nextRandom) : step.nextRandom;
}

/// A Galois shift register of 24 bits. Neighbours differ by 0.2 at least, or they would not be
/// heard as two.
float XLFO::randomAfter(float previous) noexcept CINDER_REALTIME {
    constexpr std::uint32_t topBit = 1u << 24, taps = 0x11D872B;
    randomState <<= 1;
    if ((randomState & topBit) != 0) randomState ^= taps;
    const auto centred = static_cast<std::int32_t>(randomState) - 0x800000;
    const float x = static_cast<float>(centred) * 5.9604645e-8f + 0.5f;
    const float value = randomRange == RandomRange::Unipolar ? x : 2.0f * x - 1.0f;
    constexpr float leastWay = 0.2f;
    if (std::abs(value - previous) >= leastWay) return value;
    return previous >= 0.5f ? previous - leastWay : previous + leastWay;
}

std::uint32_t XLFO::nextSeed() noexcept {
    static std::atomic<std::uint32_t> numMade{0};
    // Neighbouring seeds would draw similar values at first; the factor spreads them.
    return (numMade.fetch_add(1, std::memory_order_relaxed) + 1) * 0x9E3779B1u >> 16;
}

/// The register never holds 0, from which it would not come back.
void XLFO::seedRandom(std::uint32_t seed) noexcept CINDER_REALTIME {
    randomState = (seed & 0x7fff) + 1;
    for (Step& step : steps) {
        step.nextRandom = 0.0f;
        step.resolvedValue = 0.0f;
        step.isResolved = false;
    }
}

void XLFO::trigger(bool midiTriggerOn) noexcept CINDER_REALTIME {
    if (!midiTriggerOn) {
        positionReference = 0.0f;
        return;
    }
    clock.set(wrapped(clock.phase() - clock.base()), 0.0);
    // The song's position was told for the start of the host's block, and the note lies in it.
    positionReference = getSongPosition();
}

float XLFO::getSongPosition() const noexcept CINDER_REALTIME {
    const auto elapsed = static_cast<double>(environment->getPosition() - songPositionAt);
    return static_cast<float>(static_cast<double>(songPosition) + elapsed * quartersPerSample);
}

void XLFO::followSong(float tempo, float position) noexcept CINDER_REALTIME {
    songPosition = position;
    songPositionAt = environment->getPosition();
    const auto rate = static_cast<double>(environment->getSampleRate());
    quartersPerSample = static_cast<double>(tempo) / (60.0 * rate);
}

void XLFO::synchronise(float position, float cycleBars) noexcept CINDER_REALTIME {
    if (std::abs(position - lastPosition) > sameValue) {
        const float x = (position - positionReference) * 0.25f / cycleBars;
        const double base = clock.base(), target = wrapped(static_cast<double>(x));
        const float quarters = std::abs(position) + std::abs(positionReference);
        const double resolution = static_cast<double>(sameValue * quarters * 0.25f / cycleBars);
        if (!(wrapped(base - target) <= resolution))
            clock.set(wrapped(target + (clock.phase() - base)), target);
    }
    lastPosition = position;
}

}  // namespace cinder
