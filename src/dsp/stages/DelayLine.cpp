#include "dsp/stages/DelayLine.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/Constants.h"

namespace cinder {

namespace {

/// Gain of the head that fades out: an exponential of 36 dB, with a straight end so that it reaches
/// silence. 0.23988324 is 10 times 10^(-0.9 * 36 / 20), where the two meet.
double fadeOutGain(double rest) {
    constexpr double straightPart = 0.1, straightSlope = 0.23988324, decibels = 36.0;
    if (rest <= straightPart) return rest * straightSlope;
    return std::exp((rest - 1.0) * decibels * logPerDecibel);
}

}  // namespace

DelayLine::DelayLine(wave::Environment* environment)
    : DelayLineBase(environment), delayTime(environment), delays(environment) {
    DelayLine::reset();
}

void DelayLine::propertyChanged(AbstractProperty*) {
    updateLimits();
}

void DelayLine::reset() noexcept CINDER_REALTIME {
    constexpr float cornerHz = 5.0f;
    const double turns =
        std::min(1.0, static_cast<double>(cornerHz / environment->getSampleRate()));
    DelayLineBase::reset();
    smoothF = static_cast<float>(std::min(2.0 * std::sin(std::numbers::pi * turns), 0.95));
    smoothPending = true;
    headIndex = -1;
    headCount = 0;
    updateLimits();
}

void DelayLine::updateLimits() noexcept CINDER_REALTIME {
    const bool inSamples = delayInterpretation == DelayInterpretation::Samples;
    delayTime.getParameter().setRange(
        0.0f, inSamples ? static_cast<float>(capacity()) : getMaxDelayMs(), 0.0f);
}

double DelayLine::samplesPerUnit() const noexcept CINDER_REALTIME {
    if (delayInterpretation == DelayInterpretation::Samples) return 1.0;
    return static_cast<double>(environment->getSampleRate()) * 0.001;
}

std::int32_t DelayLine::wholeDelay(float time) const noexcept CINDER_REALTIME {
    const double samples = static_cast<double>(time) * samplesPerUnit();
    const bool inSamples = delayInterpretation == DelayInterpretation::Samples;
    const double longest = delay.getMaxDelay();
    // The limits go first, so that no value, nor a NaN, is too large for an integer.
    const double limited = samples > 0.0 ? std::min(samples, longest) : 0.0;
    return static_cast<std::int32_t>(inSamples ? std::round(limited) : limited);
}

void DelayLine::process(float* out, int numSamples) noexcept CINDER_REALTIME {
    const float* const times = delayTime.pull(numSamples)->data();
    const std::int32_t whole = wholeDelay(times[0]);
    if (smoothPending) {
        smoothPending = false;
        smoothBand = 0.0;
        smoothLow = whole;
    }
    if (readType == ReadType::Jumping) return readJumping(whole, out, numSamples);

    constexpr double arrived = 0.001;  // samples
    const bool isStill = !smoothing || std::abs(smoothLow - whole) < arrived;
    if (delayTime.isConstant() && isStill) return delay.read(whole, out, numSamples);
    followDelay(times, numSamples);
    if (readType == ReadType::CrossfadingHeads)
        readHeads(out, numSamples);
    else
        readInterpolated(out, numSamples);
}

void DelayLine::followDelay(const float* times, int numSamples) noexcept CINDER_REALTIME {
    const double longest = delay.getMaxDelay();
    const double perUnit = samplesPerUnit();
    const auto f = static_cast<double>(smoothF);
    const auto q = static_cast<double>(smoothQ);
    for (int i = 0; i < numSamples; ++i) {
        const double wanted = static_cast<double>(times[i]) * perUnit;
        double samples = wanted;
        if (smoothing) {
            smoothLow += f * smoothBand;
            samples = smoothLow;
            smoothBand += (std::trunc(wanted) - q * smoothBand - smoothLow) * f;
        }
        delays[i] = samples > 0.0 ? std::min(samples, longest) : 0.0;
    }
}

std::int64_t DelayLine::blockStart(int numSamples) const noexcept CINDER_REALTIME {
    return static_cast<std::int64_t>(delay.getWritePosition()) + delay.getReadBase() - numSamples;
}

float DelayLine::sampleAt(std::int64_t index) const noexcept CINDER_REALTIME {
    return delay.getData()[index & delay.getMask()];
}

/// The position is worked out in double: as a float its fraction would get coarse late in the ring.
void DelayLine::readInterpolated(float* out, int numSamples) noexcept CINDER_REALTIME {
    const std::int64_t start = blockStart(numSamples);
    for (int i = 0; i < numSamples; ++i) {
        const double position = static_cast<double>(start + i) - delays[i];
        const auto k = static_cast<std::int64_t>(position);
        const auto fraction = static_cast<float>(position - static_cast<double>(k));
        const bool isValid = (k & delay.getMask()) < delay.getValidCount();
        const float before = sampleAt(k);
        out[i] = isValid ? (sampleAt(k + 1) - before) * fraction + before : 0.0f;
    }
}

void DelayLine::readHeads(float* out, int numSamples) noexcept CINDER_REALTIME {
    constexpr float fadeSeconds = 0.085f;
    const auto fadeLength =
        std::max(static_cast<std::int32_t>(environment->getSampleRate() * fadeSeconds), 1);
    const std::int64_t start = blockStart(numSamples);
    const auto read = [&](std::int64_t index) {
        return (index & delay.getMask()) < delay.getValidCount() ? sampleAt(index) : 0.0f;
    };
    for (int i = 0; i < numSamples; ++i) {
        const auto now = static_cast<std::int32_t>(delays[i]);
        if (headIndex < 0) {
            headIndex = 0;
            headCount = 0;
            heads[0] = heads[1] = now;
        } else if (headCount >= fadeLength) {
            headIndex = 1 - headIndex;
            headCount = 0;
            heads[1 - headIndex] = now;
        }
        const auto gain =
            static_cast<float>(fadeOutGain(1.0 - static_cast<double>(headCount) / fadeLength));
        out[i] = read(start + i - heads[headIndex]) * gain +
                 read(start + i - heads[1 - headIndex]) * (1.0f - gain);
        ++headCount;
    }
}

}  // namespace cinder
