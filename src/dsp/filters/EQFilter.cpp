#include "dsp/filters/EQFilter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

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
constexpr double leastDamping = 0.035355337;

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
    const bool movesGain = usesGain && !gain.isConstant();
    const Settings now = {limited(log2Hz, lowestLog2Hz, highestLog2Hz),
                          usesGain ? limited(gains[0], -largestGainDb, largestGainDb) : 0.0f,
                          limited(rawQ, smallestQ, largestQ)};
    const bool othersMove = !frequency.isConstant() || !q.isConstant();
    if (othersMove || movesGain || needsDesign(now)) {
        const bool onlyGainMoves = !othersMove && isShelving() &&
                                   !differ(now.log2Hz, designed.log2Hz) &&
                                   !differ(now.q, designed.q);
        const bool canMove = onlyGainMoves && staysWet(gains, movesGain ? numSamples : 1);
        return canMove ? Standing::Moving : Standing::Alone;
    }
    if (BiquadProcessor::isNear(wetFactor, 0.0f)) return Standing::Dry;
    const bool isWhole = BiquadProcessor::isNear(wetFactor, 1.0f) && runsOn();
    return isWhole ? Standing::Still : Standing::Alone;
}

bool EQFilter::keepsGain(int numSamples) noexcept CINDER_REALTIME {
    const float gainDb = *gain.pull(numSamples)->data();
    return gain.isConstant() &&
           !differ(limited(gainDb, -largestGainDb, largestGainDb), designed.gainDb);
}

void EQFilter::setRest(wave::Rest* newRest) {
    BiquadFilter::setRest(newRest);
    for (wave::FloatParameterBus* control : {&frequency, &gain, &q})
        control->getParameter().setRest(newRest);
}

void EQFilter::passedAsPair(std::uint64_t position) noexcept CINDER_REALTIME {
    BiquadFilter::passedAsPair(position);
    for (wave::FloatParameterBus* control : {&frequency, &gain, &q})
        if (control->isOnItsOwn()) control->getParameter().wasFollowedUpTo(position);
}

/// Whether no design of the block fades into the input, nor has the last one.
bool EQFilter::staysWet(const float* gains, int numSamples) const noexcept CINDER_REALTIME {
    if (!BiquadProcessor::isNear(wetFactor, 1.0f) || !runsOn()) return false;
    for (int i = 0; i < numSamples; i += fineStep)
        if (!(std::abs(gains[i]) >= fadingGainDb)) return false;
    return true;
}

void EQFilter::layOut(int numSamples, BiquadCoefficients* perStep) noexcept CINDER_REALTIME {
    constexpr int mostAtOnce = 8;
    const float* const gains = gain.getSource()->getOutput()->data();
    const int stride = gain.isConstant() ? 0 : fineStep;
    const int numSteps = (numSamples + fineStep - 1) / fineStep;
    for (int first = 0; first < numSteps; first += mostAtOnce) {
        BiquadCoefficients* const out = perStep + first;
        const int count = std::min(numSteps - first, mostAtOnce);
        float due[mostAtOnce];
        int numDue = 0;
        int designOf[mostAtOnce];  // counted from 1; 0 is the one in force
        for (int i = 0; i < count; ++i) {
            const float gainDb =
                limited(gains[(first + i) * stride], -largestGainDb, largestGainDb);
            if (differ(gainDb, designed.gainDb)) due[numDue++] = designed.gainDb = gainDb;
            designOf[i] = numDue;
        }
        shelvingKernels->design(law, due, numDue, out);
        // Where not every step has a design of its own, from the end on: none lies behind its step.
        for (int i = count - 1; i >= 0 && numDue < count; --i)
            out[i] = designOf[i] > 0 ? out[designOf[i] - 1] : coefficients[0];
        coefficients[0] = out[count - 1];
    }
    designGainDb = designed.gainDb;
}

bool EQFilter::needsDesign(const Settings& now) const noexcept CINDER_REALTIME {
    return differ(now.log2Hz, designed.log2Hz) || differ(now.gainDb, designed.gainDb) ||
           differ(now.q, designed.q);
}

/// One section with a gain, whose design needs no prototype.
bool EQFilter::isShelving() const noexcept CINDER_REALTIME {
    return rowOf(shape).usesGain && polesOf(slope, shape) == 2;
}

void EQFilter::design(const Settings& now) noexcept CINDER_REALTIME {
    const bool isFirst = designed.log2Hz == none.log2Hz;
    const bool movesFrequency = now.log2Hz != designed.log2Hz;
    const bool movesQ = isFirst || now.q != designed.q;
    if (movesFrequency) {
        omega = angularFrequency(now.log2Hz, environment->getSampleRate());
        tangent = static_cast<double>(bilinearTangent(omega));
    }
    if (movesQ) prototypeQ = designQ(rowOf(shape).qLaw, static_cast<double>(now.q));
    designGainDb = takeGain(now.gainDb);
    designed = now;
    if (isShelving()) {
        if (movesFrequency || movesQ) updateLaw();
        return shelvingKernels->design(law, &designGainDb, 1, coefficients);
    }
    const AnalogFilterPrototype prototype = getPrototype();
    for (int i = 0; i < prototype.getNumSections(); ++i)
        coefficients[i] = mapBilinear(prototype.getSection(i), tangent);
}

/// Sets the wet factor; the gain to design for.
float EQFilter::takeGain(float gainDb) noexcept CINDER_REALTIME {
    wetFactor = 1.0f;
    if (!rowOf(shape).usesGain || std::abs(gainDb) >= fadingGainDb) return gainDb;
    wetFactor = std::abs(gainDb) * wetPerDb;
    return std::copysign(std::max(std::abs(gainDb), smallestDesignGainDb),
                         gainDb < 0.0f ? -1.0f : 1.0f);
}

AnalogFilterPrototype EQFilter::getPrototype() const noexcept CINDER_REALTIME {
    AnalogFilterPrototype prototype;
    prototype.design(shape, polesOf(slope, shape),
                     std::exp(static_cast<double>(designGainDb) * logPerDecibel), prototypeQ);
    prototype.setFrequency(static_cast<double>(omega), 1.0 / static_cast<double>(omega));
    return prototype;
}

/// What AnalogFilterPrototype would come to. A shelf is a pair of roots, at 45 degrees and E or
/// 1 / E from 0; the bell is one root, before it becomes a pair.
void EQFilter::updateLaw() noexcept CINDER_REALTIME {
    constexpr double rootTwo = std::numbers::sqrt2;
    law = {};
    law.tangent = tangent;
    if (shape == Shape::Bell) {
        law.nepersPerDb = logPerDecibel / 2.0;
        law.s2 = law.s0 = prototypeQ;
        law.s1 = 1.0;
        return;
    }
    law.nepersPerDb = logPerDecibel / 4.0;
    law.s1 = rootTwo * butterworthQ / prototypeQ;
    law.leastS1 = leastDamping;
    (shape == Shape::LowShelf ? law.s2 : law.s0) = 1.0;
    (shape == Shape::LowShelf ? law.s0Squared : law.s2Squared) = 1.0;
}

}  // namespace cinder
