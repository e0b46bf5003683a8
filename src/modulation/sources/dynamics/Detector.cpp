#include "modulation/sources/dynamics/Detector.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "modulation/sources/dynamics/DynamicsKernels.h"

namespace cinder {

namespace {

constexpr float endlessRatio = 100.0f;
constexpr auto logPerDb = static_cast<float>(logPerDecibel);
constexpr auto dbPerNeper = static_cast<float>(1.0 / logPerDecibel);

float bent(float d, float width) noexcept CINDER_REALTIME {
    const float half = width * 0.5f;
    if (!(width > sameValue) || !(d >= -half && d <= half)) return d;
    const float t = (half + d) / width;
    return t * t * half;
}

/// Written so that a NaN ends at no change.
float limited(float d, float range) noexcept CINDER_REALTIME {
    if (range < d) d = range;
    return d > 0.0f ? d : 0.0f;
}

float changeWithin(float d, float range, float rangeKnee) noexcept CINDER_REALTIME {
    if (rangeKnee > sameValue) d = range - bent(range - d, rangeKnee);
    return limited(d, range);
}

bool isZero(float value) noexcept CINDER_REALTIME {
    return std::abs(value) <= sameValue;
}

}  // namespace

Detector::Detector(wave::Environment* environment)
    : Filter(environment),
      hysteresis(environment, 0.0f, 0.0f, 30.0f),
      kneeWidth(environment, 0.0f, 0.0f, 30.0f),
      rangeKnee(environment, 0.0f, 0.0f, 30.0f),
      range(environment, 180.0f, 0.0f, 180.0f),
      ratio(environment, 1.0f, 1.0f, endlessRatio),
      threshold(environment, 0.0f, -180.0f, 180.0f),
      unchanged(environment, 1.0f) {
    for (wave::FloatParameterBus* control :
         {&hysteresis, &kneeWidth, &rangeKnee, &range, &ratio, &threshold})
        rest.add(*control);
    makeResettable();
}

void Detector::reset() noexcept CINDER_REALTIME {
    hysteresisOpen = false;
}

void Detector::propertyChanged(AbstractProperty* property) {
    if (property == &gainChangeDomain || property == &purpose) hysteresisOpen = false;
}

void Detector::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                       unsigned) noexcept CINDER_REALTIME {
    if (!rest.goesOn(environment->getPosition(), numSamples)) {
        pullControls(numSamples);
        rest.tryToBegin(numSamples);
    }
    const bool isLinear = gainChangeDomain == GainChangeDomain::Linear;
    const bool isQuadratic = kneeStyle == KneeStyle::Quadratic;
    const Purpose acting = isQuadratic ? purpose.get() : Purpose::Compress;

    if (isQuadratic && controls.ratioStandsAtOne) {
        const bool isGain = isLinear && acting != Purpose::Compress;
        passOn(isGain ? &unchanged : environment->getZeroBlock());
        setConstant(true);
        return;
    }

    const bool hasGate = acting == Purpose::Expand && !isZero(controls.hysteresis[0]);
    const bool usesKernel =
        isQuadratic && controls.standStill && isZero(controls.rangeKnee[0]) && !hasGate;
    const bool isConstantLevel = usesKernel && input->isConstant();
    const int count = isConstantLevel ? 1 : numSamples;

    const float* level = in->data();
    float* const change = out->data();
    if (isLinear && isQuadratic) {
        dynamicsKernels->levelsToDecibels(level, change, count);
        level = change;
    }
    if (usesKernel)
        bendByKernel(level, change, count);
    else if (isQuadratic)
        bendByFormula(level, change, count);
    else
        bendLogarithmically(level, change, count);
    if (isLinear)
        dynamicsKernels->changesToGains(change, change, count,
                                        acting == Purpose::Boost ? logPerDb : -logPerDb,
                                        acting == Purpose::Compress);

    if (isConstantLevel) std::fill_n(change + 1, numSamples - 1, change[0]);
    setConstant(isConstantLevel);
}

void Detector::pullControls(int numSamples) noexcept CINDER_REALTIME {
    controls.standStill = true;
    const auto take = [&](wave::FloatParameterBus& bus) {
        const float* const samples = bus.pull(numSamples)->data();
        controls.standStill = controls.standStill && bus.isConstant();
        return samples;
    };
    controls.hysteresis = take(hysteresis);
    controls.kneeWidth = take(kneeWidth);
    controls.rangeKnee = take(rangeKnee);
    controls.range = take(range);
    controls.ratio = take(ratio);
    controls.threshold = take(threshold);
    controls.ratioStandsAtOne = ratio.isConstant() && isZero(controls.ratio[0] - 1.0f);
}

/// The curve sample by sample. `levelDb` may be `out`.
void Detector::bendByFormula(const float* levelDb, float* out,
                             int numSamples) noexcept CINDER_REALTIME {
    for (int i = 0; i < numSamples; ++i) {
        const float width = controls.kneeWidth[i];
        float r = controls.ratio[i];
        float d = levelDb[i] - controls.threshold[i];
        switch (purpose) {
            case Purpose::Compress:
                d = bent(d, width);
                if (r < endlessRatio) d = d - d / r;
                break;
            case Purpose::Expand:
                d = -d;
                r = heldRatio(d, controls.hysteresis[i], r);
                d = bent(d - width * 0.5f, width) * (r - 1.0f);
                break;
            case Purpose::Boost:
                d = bent(d, width) * (r - 1.0f);
                break;
        }
        out[i] = changeWithin(d, controls.range[i], controls.rangeKnee[i]);
    }
}

void Detector::bendByKernel(const float* levelDb, float* out,
                            int numSamples) noexcept CINDER_REALTIME {
    if (purpose == Purpose::Expand) settleGate(levelDb, numSamples, controls.threshold[0]);
    const CurveControls standing{controls.threshold[0], controls.ratio[0], controls.kneeWidth[0],
                                 controls.range[0]};
    dynamicsKernels->changes[static_cast<int>(purpose.get())](levelDb, out, numSamples, standing);
}

void Detector::bendLogarithmically(const float* level, float* out,
                                   int numSamples) const noexcept CINDER_REALTIME {
    const bool isLinear = gainChangeDomain == GainChangeDomain::Linear;
    float slope = 0.0f;
    float slopeThreshold = 0.0f;
    for (int i = 0; i < numSamples; ++i) {
        const float x = isLinear ? level[i] : std::exp(level[i] * logPerDb);
        const float t = controls.threshold[i];
        if (t != slopeThreshold) {
            slopeThreshold = t;
            slope = std::exp(-t * logPerDb) - 1.0f;
        }
        const float d = t < -sameValue ? dbPerNeper * std::log1p(std::abs(slope * x)) : 0.0f;
        out[i] = changeWithin(d, controls.range[i], controls.rangeKnee[i]);
    }
}

/// The ratio of Expand under hysteresis: nothing changes from the moment the level has risen over
/// the threshold until it has fallen `hysteresisDb` below it.
float Detector::heldRatio(float d, float hysteresisDb, float ratioNow) noexcept CINDER_REALTIME {
    if (!hysteresisOpen) {
        if (!(d < 0.0f)) return ratioNow;
        hysteresisOpen = true;
        return 1.0f;
    }
    if (d <= hysteresisDb) return 1.0f;
    hysteresisOpen = false;
    return ratioNow;
}

/// What a hysteresis of 0 leaves of the gate: the last level that was off the threshold decides.
void Detector::settleGate(const float* levelDb, int numSamples,
                          float thresholdDb) noexcept CINDER_REALTIME {
    for (int i = numSamples - 1; i >= 0; --i) {
        const float d = -(levelDb[i] - thresholdDb);
        if (d == 0.0f) continue;
        hysteresisOpen = d < 0.0f;
        return;
    }
}

}  // namespace cinder
