#include "analysis/DiscreteFrequencyResponseSource.h"

#include <algorithm>
#include <cmath>

namespace cinder {

using Mapping = DiscreteFrequencyResponseSource::Mapping;

float Mapping::getFrequency(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (index >= 0 && at < frequencyCount) return frequencies[at];
    const float offset = static_cast<float>(index) * step;
    const float hz = logarithmic ? lowFrequency * std::exp(offset) : lowFrequency + offset;
    if (index >= 0 && at == frequencyCount && at < frequencies.size())
        frequencies[frequencyCount++] = hz;
    return hz;
}

int Mapping::getIndex(float hz) const {
    constexpr float furthest = 1e9f;  // fits into an int, and so does half a step more
    const float x = (logarithmic ? std::log(hz / lowFrequency) : hz - lowFrequency) / step;
    if (!(x > -furthest)) return static_cast<int>(-furthest);
    return static_cast<int>(std::min(x, furthest) + (x < 0.0f ? -0.5f : 0.5f));
}

void Mapping::propertyChanged(AbstractProperty*) {
    update();
    changed.fire(this);
}

void Mapping::update() {
    const auto numPoints = static_cast<std::size_t>(steps.get()) + 1;
    if (numPoints > frequencies.size()) frequencies.resize(numPoints);
    frequencyCount = 0;
    const float whole =
        logarithmic ? std::log(highFrequency / lowFrequency) : highFrequency - lowFrequency;
    step = whole / static_cast<float>(steps.get());
}

void DiscreteFrequencyResponseSource::getResponses(int first, Response* out, int count) {
    for (int i = 0; i < count; ++i)
        out[i] = getResponseAt(first + i);
}

void DiscreteFrequencyResponseSource::getPowers(int first, float* out, int count) {
    for (int i = 0; i < count; ++i)
        out[i] = getPower(first + i);
}

}  // namespace cinder
