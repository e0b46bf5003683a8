#include "distortion/drive/Smudger.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "core/simd/BlockMath.h"
#include "distortion/drive/Drive.h"

namespace cinder {

namespace {

constexpr float lowestRate = 5.0f;    // Hz
constexpr double longestSlice = 0.2;  // seconds, one turn of the lowest rate
constexpr double fadeTurns = 0.25;    // of the rate, at drive 0

double limitedRate(float rate) noexcept CINDER_REALTIME {
    return static_cast<double>(rate > lowestRate ? rate : lowestRate);
}

/// From 2 on, with which a loop and a fade get anywhere, up to a bound on memory.
std::int32_t wholeSamples(double samples) noexcept CINDER_REALTIME {
    constexpr double fewest = 2.0, most = 0x1p25;
    return static_cast<std::int32_t>(std::clamp(samples, fewest, most));
}

/// Gain of what fades in at the end of the loop, t from 0 to 1: an exponential of 36 dB, with a
/// straight start so that it begins at 0. 0.23988324 is 10 times 10^(-0.9 * 36 / 20), where the two
/// meet.
double fadeInGain(double t) noexcept CINDER_REALTIME {
    constexpr double straightPart = 0.1, straightSlope = 0.23988324, decibels = 36.0;
    if (t <= straightPart) return t * straightSlope;
    return std::exp((t - 1.0) * decibels * logPerDecibel);
}

}  // namespace

void Smudger::Grain::resize(std::int32_t longestLoop) {
    buffer.resize(longestLoop);
    fades.resize(longestLoop - longestLoop / 2);
}

void Smudger::Grain::restart(std::int32_t newLoopLength) noexcept CINDER_REALTIME {
    if (newLoopLength != loopLength) numFades = 0;
    loopLength = newLoopLength;
    position = 0;
    written = 0;
}

void Smudger::Grain::store(const float* in, int numSamples) noexcept CINDER_REALTIME {
    const int count = std::min(loopLength - written, numSamples);
    std::copy_n(in, count, buffer.data() + written);
    written += count;
}

const float* Smudger::Grain::render(int numSamples) noexcept CINDER_REALTIME {
    const std::int32_t half = loopLength / 2;
    float* out = output.data();
    float* const end = out + numSamples;
    while (out != end) {
        const float* const from = buffer.data() + position;
        const auto left = static_cast<std::int32_t>(end - out);
        std::int32_t run = 0;
        if (position < half) {
            run = std::min(half - position, left);
            std::copy_n(from, run, out);
        } else {
            run = std::min(loopLength - position, left);
            const std::int32_t j = position - half;
            prepareFades(j + run);
            simd::crossfade(from, buffer.data() + j, fades.data() + j, out, run);
        }
        out += run;
        position += run;
        if (position == loopLength) position = loopLength - half;
    }
    return output.data();
}

void Smudger::Grain::prepareFades(std::int32_t count) noexcept CINDER_REALTIME {
    const double rest = loopLength - loopLength / 2;
    for (; numFades < count; ++numFades)
        fades[numFades] = static_cast<float>(fadeInGain(numFades / rest));
}

Smudger::Smudger(wave::Environment* environment)
    : Filter(environment), drive(environment), grains{Grain(environment), Grain(environment)} {
    makeResettable();
    Smudger::reset();
}

void Smudger::reset() noexcept CINDER_REALTIME {
    fitToSampleRate();
    crossfadePosition = 0;
    for (Grain& grain : grains)
        restart(grain);
}

/// Allocates where the rate has changed.
void Smudger::fitToSampleRate() {
    const std::int32_t longestLoop = wholeSamples(longestSlice * sampleRate());
    for (Grain& grain : grains)
        grain.resize(longestLoop);
}

double Smudger::sampleRate() const noexcept CINDER_REALTIME {
    return static_cast<double>(environment->getSampleRate());
}

std::int32_t Smudger::periodAt(float d) const noexcept CINDER_REALTIME {
    const double seconds = fadeTurns / limitedRate(rate) + static_cast<double>(d * d);
    return wholeSamples(seconds * sampleRate());
}

void Smudger::restart(Grain& grain) noexcept CINDER_REALTIME {
    // One division: by way of seconds a turn of whole samples may come out one short.
    grain.restart(std::min(wholeSamples(sampleRate() / limitedRate(rate)), grain.longestLoop()));
}

void Smudger::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                      unsigned) noexcept CINDER_REALTIME {
    const float* const drives = drive.pull(numSamples)->data();
    for (int done = 0; done < numSamples;) {
        const std::int32_t period = periodAt(limitedDrive(drives[done]));
        // Nothing is left of a fade that a falling drive has made shorter than it already is.
        const int chunk = std::clamp(period - crossfadePosition, 0, numSamples - done);
        for (Grain& grain : grains)
            grain.store(in->data() + done, chunk);
        crossfade(out->data() + done, chunk, period);
        done += chunk;
        if (crossfadePosition < period) continue;
        restart(grains[activeGrain]);
        activeGrain = 1 - activeGrain;
        crossfadePosition = 0;
    }
}

void Smudger::crossfade(float* out, int numSamples, std::int32_t period) noexcept CINDER_REALTIME {
    const float* const a = grains[activeGrain].render(numSamples);
    const float* const b = grains[1 - activeGrain].render(numSamples);
    const auto length = static_cast<float>(period);
    for (int i = 0; i < numSamples; ++i) {
        const float w = static_cast<float>(crossfadePosition + i) / length;
        const float y = (1.0f - w) * a[i] + w * b[i];
        out[i] = y == y ? std::clamp(y, -1.0f, 1.0f) : 0.0f;
    }
    crossfadePosition += numSamples;
}

}  // namespace cinder
