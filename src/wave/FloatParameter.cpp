#include "wave/FloatParameter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Constants.h"

namespace cinder::wave {

namespace {

float signedFraction(float x) {
    return x - std::trunc(x);
}

/// The way from `start` to `end` on a circle, at most half way round.
float shorterWay(float start, float end, float period) {
    float d = signedFraction(signedFraction(end / period) - signedFraction(start / period));
    if (d > 0.5f) d -= 1.0f;
    if (d < -0.5f) d += 1.0f;
    return d * period;
}

std::int32_t samplesOf(float milliseconds, float sampleRate) {
    const double samples = static_cast<double>(milliseconds * sampleRate) * 0.001;
    constexpr double longest = std::numeric_limits<std::int32_t>::max();
    return samples > 0.0 ? static_cast<std::int32_t>(std::min(samples, longest)) : 0;
}

}  // namespace

FloatParameter::FloatParameter(Environment* environment, float initial)
    : FloatParameter(environment, initial, std::min(initial, 0.0f), std::max(initial, 1.0f)) {}

FloatParameter::FloatParameter(Environment* environment, float initial, float minimum,
                               float maximum)
    : Component(environment),
      valueBlock(environment),
      rampStart(initial),
      maximum(maximum),
      minimum(minimum),
      range(maximum - minimum),
      target(initial) {}

FloatParameter::FloatParameter(const FloatParameter& other)
    : Component(other.environment),
      wrapPeriod(other.wrapPeriod),
      maxRampTime(other.maxRampTime),
      minRampTime(other.minRampTime),
      valueBlock(other.environment),
      rampStart(other.target),
      maximum(other.maximum),
      minimum(other.minimum),
      range(other.range),
      target(other.target) {}

void FloatParameter::setValue(float value, float rampMs) noexcept CINDER_REALTIME {
    const float v = clamped(value);
    if (std::abs(v - target) <= sameValue) return;
    endRest();

    const std::uint64_t position = environment->getPosition();
    const bool followed =
        lastPosition > environment->getResetPosition() && lastPosition == position;
    lastPosition = position;

    float start = isRamping() && followed ? currentValue() : target;
    if (wrapPeriod > 0.0f) start = clamped(v - shorterWay(start, v, wrapPeriod));
    const float difference = v - start;
    if (rampMs < 0.0f) rampMs = followed ? automaticRampMs(difference) : 0.0f;

    rampStart = start;
    rampPosition = 0;
    valueBlock.filled = 0;
    rampLength = samplesOf(rampMs, environment->getSampleRate());
    rampStep = rampLength > 0 ? difference / static_cast<float>(rampLength) : 0.0f;
    target = v;
}

void FloatParameter::setRange(float newMinimum, float newMaximum,
                              float newRange) noexcept CINDER_REALTIME {
    minimum = newMinimum;
    maximum = newMaximum;
    range = newRange > 0.0f ? newRange : newMaximum - newMinimum;
    const float limited = clamped(target);
    if (!isChange(target, limited)) return;
    endRest();
    target = limited;
    rampStart = limited;
    rampPosition = 0;
    rampLength = 0;
    rampStep = 0.0f;
    valueBlock.filled = 0;
}

FloatParameter::ValueBlock* FloatParameter::render(int numSamples,
                                                   bool* isConstant) noexcept CINDER_REALTIME {
    float* const out = valueBlock.data();
    *isConstant = !isRamping();
    if (*isConstant) {
        if (valueBlock.filled < numSamples) {
            std::fill(out + valueBlock.filled, out + numSamples, target);
            valueBlock.filled = numSamples;
        }
        return &valueBlock;
    }
    const int count = std::min(rampLength - rampPosition, numSamples);
    const auto step = static_cast<double>(rampStep);
    auto value = static_cast<double>(currentValue());
    for (int i = 0; i < count; ++i) {
        out[i] = static_cast<float>(value);
        value += step;
    }
    rampPosition += count;
    std::fill(out + count, out + numSamples, target);
    return &valueBlock;
}

FloatParameter::ValueBlock* FloatParameter::followRamp(int numSamples,
                                                       bool* isConstant) noexcept CINDER_REALTIME {
    const std::uint64_t position = environment->getPosition();
    if (lastPosition > position) {
        // Somebody else has followed it in this cycle, and everybody hears the same.
        *isConstant = valueBlock.filled > 0;
        return &valueBlock;
    }
    const auto left = static_cast<std::uint64_t>(std::max(rampLength - rampPosition, 0));
    const std::uint64_t skipped =
        lastPosition > environment->getResetPosition() ? position - lastPosition : left;
    lastPosition = position + static_cast<std::uint64_t>(numSamples);
    rampPosition += static_cast<std::int32_t>(std::min(skipped, left));
    return render(numSamples, isConstant);
}

/// Written so that a NaN ends at the minimum.
float FloatParameter::clamped(float value) const noexcept CINDER_REALTIME {
    if (!(value >= minimum)) return minimum;
    return value > maximum ? maximum : value;
}

float FloatParameter::automaticRampMs(float difference) const noexcept CINDER_REALTIME {
    // 1 / 0.3^2 makes the weight of the full ramp run from 1 for no step to 0 for 30 % of the
    // range.
    constexpr float largeStep = 0.3f;
    constexpr float inverseLargeStepSquared = 11.111111f;
    const float rest = largeStep - std::abs(difference) / range;
    const float w = rest > 0.0f ? rest : 0.0f;
    return (maxRampTime - minRampTime) * w * w * inverseLargeStepSquared + minRampTime;
}

}  // namespace cinder::wave
