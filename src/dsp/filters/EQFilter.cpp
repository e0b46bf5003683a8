#include "dsp/filters/EQFilter.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "dsp/filters/Bilinear.h"

namespace cinder {

namespace {

constexpr float lowestLog2Hz = 0.0f;
constexpr float highestLog2Hz = 15.0f;
constexpr float largestGainDb = 30.0f;
constexpr float smallestQ = 0.025f;
constexpr float largestQ = 40.0f;

constexpr double butterworthQ = 0.70710677;

// Below this gain the filter fades into its input; it is designed for no less than the other.
constexpr float fadingGainDb = 0.05f;
constexpr float wetPerDb = 20.0f;
constexpr float smallestDesignGainDb = 0.01f;

double designQ(QLaw law, double q) noexcept {
    if (law == QLaw::Proportional) return q * butterworthQ;
    return std::exp2((std::log(q) * 0.13554251 + 0.5) * 5.0) / 8.0;
}

bool differ(float a, float b) noexcept {
    return std::abs(a - b) > sameValue;
}

/// A NaN becomes the lower limit.
float limited(float value, float lowest, float highest) noexcept {
    return value >= lowest ? std::min(value, highest) : lowest;
}

}  // namespace

EQFilter::EQFilter(wave::Environment* environment)
    : BiquadFilter(environment, AnalogFilterPrototype::maxSections),
      frequency(environment, 10.0f, lowestLog2Hz, highestLog2Hz),
      gain(environment, 0.0f, -largestGainDb, largestGainDb),
      q(environment, 1.0f, smallestQ, largestQ) {
    processor.resetMode = BiquadProcessor::ResetMode::FromFirstInput;
}

void EQFilter::reset() noexcept CINDER_REALTIME {
    BiquadFilter::reset();
    designed = none;
}

void EQFilter::propertyChanged(AbstractProperty* property) {
    BiquadFilter::propertyChanged(property);
    if (property == &enabled && !enabled) return;
    designed = none;
    if (property != &enabled) processor.restartSoftly();
}

void EQFilter::computeCoefficients(int numSamples,
                                   BiquadProcessor& target) noexcept CINDER_REALTIME {
    const FilterShapeRow& row = rowOf(shape);
    const float* const frequencies = frequency.pull(numSamples)->data();
    const float* const qs = q.pull(numSamples)->data();
    const float* const gains = row.usesGain ? gain.pull(numSamples)->data() : nullptr;
    // Values of other sources are limited like those of the own ones.
    const auto settingsAt = [=](int i) {
        return Settings{limited(frequencies[i], lowestLog2Hz, highestLog2Hz),
                        gains ? limited(gains[i], -largestGainDb, largestGainDb) : 0.0f,
                        limited(qs[i], smallestQ, largestQ)};
    };
    const auto schedule = [&](int count) { target.schedule(coefficients, wetFactor, count); };

    target.setNumSections(getNumSections());
    if (frequency.isConstant() && q.isConstant() && (!gains || gain.isConstant())) {
        const Settings now = settingsAt(0);
        if (needsDesign(now)) design(now);
        return target.hold(coefficients, wetFactor);
    }
    const auto isDue = [&](int i, bool finely) {
        constexpr float coarseOctaves = 0.1f;
        const Settings now = settingsAt(i);
        return finely ? needsDesign(now) : std::abs(now.log2Hz - designed.log2Hz) > coarseOctaves;
    };
    followControls(
        numSamples, !frequency.isConstant(), isDue, [&](int i) { design(settingsAt(i)); },
        schedule);
}

EQFilter::Standing EQFilter::standing(int numSamples) noexcept CINDER_REALTIME {
    if (!standsAsPair()) return Standing::Alone;
    const bool usesGain = rowOf(shape).usesGain;
    const float log2Hz = *frequency.pull(numSamples)->data();
    const float rawQ = *q.pull(numSamples)->data();
    const float* const gains = usesGain ? gain.pull(numSamples)->data() : nullptr;
    const float gainDb = usesGain ? gains[0] : 0.0f;
    const bool movesGain = usesGain && !gain.isConstant();
    if (!frequency.isConstant() || !q.isConstant() || movesGain ||
        needsDesign({limited(log2Hz, lowestLog2Hz, highestLog2Hz),
                     limited(gainDb, -largestGainDb, largestGainDb),
                     limited(rawQ, smallestQ, largestQ)})) {
        const int count = movesGain ? numSamples : 1;
        return staysWet(gains, usesGain ? count : 0) ? Standing::Moving : Standing::Alone;
    }
    if (BiquadProcessor::isNear(wetFactor, 0.0f)) return Standing::Dry;
    const bool isWhole = BiquadProcessor::isNear(wetFactor, 1.0f) && runsOn();
    return isWhole ? Standing::Still : Standing::Alone;
}

/// Whether no design of the block fades into the input, nor has the last one.
bool EQFilter::staysWet(const float* gains, int numSamples) const noexcept CINDER_REALTIME {
    if (!BiquadProcessor::isNear(wetFactor, 1.0f) || !runsOn()) return false;
    const int step = frequency.isConstant() ? fineStep : BiquadProcessor::scheduleStep;
    for (int i = 0; i < numSamples; i += step)
        if (!(std::abs(gains[i]) >= fadingGainDb)) return false;
    return true;
}

const Schedule<BiquadCoefficients>& EQFilter::layOut(int numSamples) noexcept CINDER_REALTIME {
    computeCoefficients(numSamples, processor);
    processor.layOutHeld(numSamples);
    return processor.getSchedule();
}

bool EQFilter::needsDesign(const Settings& now) const noexcept CINDER_REALTIME {
    return differ(now.log2Hz, designed.log2Hz) || differ(now.gainDb, designed.gainDb) ||
           differ(now.q, designed.q);
}

void EQFilter::design(const Settings& now) noexcept CINDER_REALTIME {
    if (now.log2Hz != designed.log2Hz) {
        omega = angularFrequency(now.log2Hz, environment->getSampleRate());
        tangent = static_cast<double>(bilinearTangent(omega));
    }
    updatePrototype(now);
    designed = now;
    prototype.setFrequency(static_cast<double>(omega), 1.0 / static_cast<double>(omega));
    for (int i = 0; i < prototype.getNumSections(); ++i)
        coefficients[i] = mapBilinear(prototype.getSection(i), tangent);
}

/// The prototype does not depend on the frequency.
void EQFilter::updatePrototype(const Settings& now) noexcept CINDER_REALTIME {
    if (now.gainDb == designed.gainDb && now.q == designed.q) return;

    const FilterShapeRow& row = rowOf(shape);
    float gainDb = now.gainDb;
    wetFactor = 1.0f;
    if (row.usesGain && std::abs(gainDb) < fadingGainDb) {
        wetFactor = std::abs(gainDb) * wetPerDb;
        gainDb = std::copysign(std::max(std::abs(gainDb), smallestDesignGainDb),
                               gainDb < 0.0f ? -1.0f : 1.0f);
    }
    if (now.q != designed.q || designed.log2Hz == none.log2Hz)
        prototypeQ = designQ(row.qLaw, static_cast<double>(now.q));
    prototype.design(shape, polesOf(slope, shape),
                     std::exp(static_cast<double>(gainDb) * logPerDecibel), prototypeQ);
}

}  // namespace cinder
