#include "modulation/sources/xlfo/XLFO.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "modulation/sources/xlfo/GlideKernels.h"

namespace cinder {

namespace {

constexpr float highestFrequency = 5000.0f;
constexpr float furthestOffset = 100.0f;

/// A NaN is a standstill.
float boundedFrequency(float hz) {
    return hz > 0.0f ? std::min(hz, highestFrequency) : 0.0f;
}

/// A NaN is no offset.
float boundedOffset(float turns) {
    return std::isnan(turns) ? 0.0f : std::clamp(turns, -furthestOffset, furthestOffset);
}

std::size_t kernelOf(GlideCurve curve) {
    return static_cast<std::size_t>(
        std::clamp(static_cast<int>(curve), 0, simd::GlideKernels::numCurves - 1));
}

}  // namespace

XLFO::XLFO(wave::Environment* environment)
    : Source(environment),
      frequency(environment, 0.1f, 0.0f, highestFrequency),
      glide(environment, 0.0f, -1.0f, 1.0f),
      phaseOffset(environment, 0.0f, -furthestOffset, furthestOffset),
      times(environment),
      increments(environment),
      jumps(environment) {
    phaseOffset.getParameter().setRange(-furthestOffset, furthestOffset, 1.0f);
    phaseOffset.getParameter().wrapPeriod = 1.0f;
    seedRandom(nextSeed());
    layOutSteps();
    setRenderPriority(1);
}

void XLFO::render(wave::BasicBlock<float>* block, int numSamples,
                  unsigned) noexcept CINDER_REALTIME {
    Controls controls = {
        .frequency = frequency.pull(numSamples)->data(),
        .glide = glide.pull(numSamples)->data(),
        .phaseOffset = phaseOffset.pull(numSamples)->data(),
        .sampleRate = static_cast<double>(environment->getSampleRate()),
        .phaseIsEven = frequency.isConstant() && phaseOffset.isConstant(),
        .glideStands = glide.isConstant(),
        .inverseIncrement = 0.0,
    };
    if (controls.phaseIsEven) {
        const float hz = boundedFrequency(controls.frequency[0]);
        clock.setIncrement(static_cast<double>(hz) / controls.sampleRate);
        controls.inverseIncrement = 1.0 / clock.increment;
    } else {
        prepareTrack(controls, 0, numSamples);
    }
    float* const out = block->data();
    for (int i = 0; i < numSamples;) {
        const double phase = clock.phase();
        current = findStep(phase);
        const Stretch stretch = stretchAt(current, phase);
        // An offset that has jumped acts from the second sample on; then it stands.
        const bool jumpsHere = boundedOffset(controls.phaseOffset[0]) != lastPhaseOffset;
        if (!controls.phaseIsEven) {
            i += renderTracked(stretch, controls, out, i, numSamples);
        } else if (jumpsHere) {
            prepareTrack(controls, i, i + 1);
            i += renderTracked(stretch, controls, out, i, i + 1);
        } else {
            i += renderEven(stretch, controls, out, i, numSamples);
        }
        const double next = clock.phase();
        if (!(next >= stretch.start && next < stretch.end))
            leaveStretch(steps[static_cast<std::size_t>(current)]);
    }
    constexpr float fastestShown = 10.0f;  // pairs of steps a second
    const float pairsPerSecond = static_cast<float>(stepsInUse) * controls.frequency[0] * 0.5f;
    status = pairsPerSecond > fastestShown ? fast : 0;
    show(out[0]);
}

/// The steps cover the cycle without gap or overlap. Usually it is the same one or the next.
int XLFO::findStep(double phase) const noexcept CINDER_REALTIME {
    int index = current < stepsInUse ? current : 0;
    for (int tried = 0; tried < stepsInUse; ++tried) {
        const Step& step = steps[static_cast<std::size_t>(index)];
        if (step.start <= phase && phase < step.end) return index;
        index = index + 1 < stepsInUse ? index + 1 : 0;
    }
    return 0;
}

XLFO::Stretch XLFO::stretchAt(int index, double phase) noexcept CINDER_REALTIME {
    const Step& step = steps[static_cast<std::size_t>(index)];
    const float from = valueOf(index), to = valueBehind(index);
    Stretch stretch = {&step,    from,       to,        step.start,
                       step.end, step.start, step.pace, step.end - step.start};
    if (step.isMiddle) {
        if (phase < firstShare) {
            stretch.end = firstShare;
        } else {
            stretch.start = firstShare;
            // As if the other half of the step had gone at this half's speed.
            stretch.origin = firstShare - (step.end - firstShare);
        }
        stretch.length = 2.0 * (stretch.end - stretch.start);
        stretch.pace = 0.5 / (stretch.end - stretch.start);
    }
    return stretch;
}

void XLFO::leaveStretch(Step& step) noexcept CINDER_REALTIME {
    const double phase = clock.phase();
    if (!(phase >= step.start && phase < step.end)) step.isResolved = !step.random;
    const double base = wrapped(clock.base());
    clock.set(wrapped(static_cast<double>(lastPhaseOffset) + base), base);
}

/// Frequency and offset stand. If the glide does as well, the samples before it and in it are two
/// runs.
int XLFO::renderEven(const Stretch& stretch, const Controls& controls, float* out, int first,
                     int numSamples) noexcept CINDER_REALTIME {
    const int count =
        clock.samplesUntil(stretch.end, controls.inverseIncrement, numSamples - first);
    simd::EvenPace pace = {clock.start, clock.count, clock.increment, stretch.origin, stretch.pace};
    if (!controls.glideStands) {
        simd::glideKernels->times(pace, times.data(), count);
        glideAlongTimes(stretch, controls, out, first, count);
        clock.advance(count);
        return count;
    }
    const simd::Glide glideOfStep = {stretch.from, stretch.to, stretch.step->glide};
    const float root = 0.0002f * boundedFrequency(controls.frequency[0]);
    const float sum = glideOfStep.amount + controls.glide[0];
    const float g = sum >= root * root ? std::min(sum, 1.0f) : root * root;
    constexpr int shortest = 16;  // below, it's cheaper to ask each sample
    int numHeld = count;
    if (stretch.from != stretch.to)
        numHeld = count < shortest
                      ? 0
                      : samplesBefore(1.0f - g, stretch, controls.inverseIncrement, count);
    hold(stretch.from, out, first, numHeld);
    if (numHeld < count) {
        held = std::min(held, first + numHeld);
        pace.count += static_cast<double>(numHeld);
        simd::glideKernels->gliding[kernelOf(stretch.step->glideCurve)](
            pace, glideOfStep, g, out + first + numHeld, count - numHeld);
    }
    clock.advance(count);
    return count;
}

/// How many of the next samples do not glide yet.
int XLFO::samplesBefore(float glideBegin, const Stretch& stretch, double inverseIncrement,
                        int numSamples) const noexcept CINDER_REALTIME {
    const auto isBefore = [&](int n) {
        const double t = (clock.phaseAfter(n) - stretch.origin) * stretch.pace;
        return static_cast<float>(t) <= glideBegin;
    };
    if (isBefore(numSamples - 1)) return numSamples;
    if (!isBefore(0)) return 0;
    // The phase moves, then, and the kernels' own rounding decides what its own estimate doesn't.
    const double begin = static_cast<double>(glideBegin) * stretch.length;
    int n = clock.samplesUntil(stretch.origin + begin, inverseIncrement, numSamples - 1);
    while (n > 1 && !isBefore(n - 1))
        --n;
    while (n < numSamples - 1 && isBefore(n))
        ++n;
    return n;
}

int XLFO::renderTracked(const Stretch& stretch, const Controls& controls, float* out, int first,
                        int numSamples) noexcept CINDER_REALTIME {
    const int count = trackPhase(stretch, controls, first, numSamples);
    glideAlongTimes(stretch, controls, out, first, count);
    return count;
}

void XLFO::glideAlongTimes(const Stretch& stretch, const Controls& controls, float* out, int first,
                           int count) noexcept CINDER_REALTIME {
    held = std::min(held, first);
    simd::glideKernels->moving[kernelOf(stretch.step->glideCurve)](
        times.data(), controls.frequency + first, controls.glide + first,
        {stretch.from, stretch.to, stretch.step->glide}, out + first, count);
}

void XLFO::prepareTrack(const Controls& controls, int first,
                        int numSamples) noexcept CINDER_REALTIME {
    const int n = numSamples - first;
    simd::glideKernels->increments(controls.frequency + first, controls.sampleRate,
                                   increments.data() + first, n);
    const int numJumps = phaseOffset.isConstant() ? 1 : n;
    simd::glideKernels->jumps(controls.phaseOffset + first, lastPhaseOffset, jumps.data() + first,
                              numJumps);
    std::fill(jumps.data() + first + numJumps, jumps.data() + numSamples, 0.0);
}

/// Goes on to the end of the stretch, or to sample `numSamples`, and notes the times. While
/// something moves, the phase is carried from sample to sample; where nothing has moved since the
/// sample before, the clock counts, as it would in a block that stands.
int XLFO::trackPhase(const Stretch& stretch, const Controls& controls, int first,
                     int numSamples) noexcept CINDER_REALTIME {
    const double *const increment = increments.data(), *const jump = jumps.data();
    const double origin = stretch.origin, pace = stretch.pace;
    const double start = stretch.start, end = stretch.end;
    float* t = times.data();
    PhaseClock local = clock;
    double phase = local.phase();
    int i = first;
    do {
        if (increment[i] == local.increment && jump[i] == 0.0) {
            *t++ = static_cast<float>((phase - origin) * pace);
            local.advance(1);
            phase = local.phase();
            ++i;
            continue;
        }
        double base = local.base(), phaseBefore = phase, baseBefore = base, step = 0.0;
        do {
            phaseBefore = phase;
            baseBefore = base;
            step = increment[i];
            *t++ = static_cast<float>((phase - origin) * pace);
            phase += jump[i] + step;
            base += step;
            ++i;
        } while (i < numSamples && phase >= start && phase < end &&
                 (increment[i] != step || jump[i] != 0.0));
        local.increment = step;
        if (jump[i - 1] == 0.0) {
            local.set(phaseBefore, baseBefore);
            local.advance(1);
        } else {
            local.set(phase, base);
        }
    } while (i < numSamples && phase >= start && phase < end);
    clock = local;
    lastPhaseOffset = boundedOffset(controls.phaseOffset[i - 1]);
    return i - first;
}

/// Fills, unless these samples of the block hold the value since the last time.
void XLFO::hold(float value, float* out, int first, int numSamples) noexcept CINDER_REALTIME {
    if (numSamples == 0) return;
    const int end = first + numSamples;
    if (value == heldValue && first <= held) {
        if (end > held) std::fill(out + held, out + end, value);
        held = std::max(held, end);
        return;
    }
    std::fill(out + first, out + end, value);
    if (first == 0) {
        heldValue = value;
        held = end;
    } else {
        held = std::min(held, first);
    }
}

void XLFO::show(float first) noexcept CINDER_REALTIME {
    float value = first;
    if ((status & fast) != 0) {
        value = -1.0f;
        for (int i = 0; i < stepsInUse; ++i)
            value = std::max(value, steps[static_cast<std::size_t>(i)].value.get());
    }
    shown.store((value + 1.0f) * 0.5f, std::memory_order_relaxed);
}

}  // namespace cinder
