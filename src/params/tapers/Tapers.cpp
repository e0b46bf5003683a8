#include "params/tapers/Tapers.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"

namespace cinder {

namespace {

constexpr float silenceDb = -180.0f;
constexpr float silenceRatio = 1e-10f;

// The level of a band: where the parabola ends, and what it is there.
constexpr float levelKnee = 0.2f;  // of the travel
constexpr float levelKneeDb = -21.6f;
constexpr float levelKneeRatio = 0.08317638f;
constexpr float levelSlopeDb = 72.0f;  // over the whole travel
constexpr float levelParabola = 2.0794094f;
constexpr float levelParabolaInverse = 12.022644f;  // of the travel up to the knee

float levelToDisplay(float value) noexcept {
    const float travel = (value + 1.0f) * 0.5f;
    const float ratio = travel >= levelKnee
                            ? ratioOfDecibels((travel - levelKnee) * levelSlopeDb + levelKneeDb)
                            : travel * travel * levelParabola;
    return decibelsOfRatio(ratio);
}

float levelFromDisplay(float decibels) noexcept {
    const float ratio = ratioOfDecibels(decibels);
    if (ratio >= levelKneeRatio)
        return (decibelsOfRatio(ratio) - levelKneeDb) * 0.027777778f + 2.0f * levelKnee - 1.0f;
    return std::sqrt(ratio * levelParabolaInverse) * 2.0f * levelKnee - 1.0f;
}

float powerOfTwo(float x) noexcept {
    return std::exp2(x);
}
float binaryLogarithm(float x) noexcept {
    return std::log2(x);
}

float levelCurveAt(float x) noexcept {
    return levelCurve.oddAt(x);
}
float levelCurveInverse(float y) noexcept {
    return levelCurve.oddInverse(y);
}
float frequencyCurveAt(float x) noexcept {
    return frequencyCurve.at(x);
}
float frequencyCurveInverse(float y) noexcept {
    return frequencyCurve.inverse(y);
}
float timeCurveAt(float x) noexcept {
    return timeCurve.at(x);
}
float timeCurveInverse(float y) noexcept {
    return timeCurve.inverse(y);
}

float percentOfBipolar(float x) noexcept {
    return (x + 1.0f) * 50.0f;
}
float bipolarOfPercent(float percent) noexcept {
    return percent * 0.02f - 1.0f;
}

}  // namespace

float decibelsOfRatio(float ratio) noexcept CINDER_REALTIME {
    const float magnitude = std::fabs(ratio);
    if (!(magnitude > silenceRatio)) return silenceDb;
    return std::max(static_cast<float>(20.0 * std::log10(double{magnitude})), silenceDb);
}

float ratioOfDecibels(float decibels) noexcept CINDER_REALTIME {
    return static_cast<float>(std::exp(double{decibels} * logPerDecibel));
}

namespace tapers {

const Taper none = {};
const Taper gain = {ratioOfDecibels, decibelsOfRatio, decibelsOfRatio, ratioOfDecibels};
const Taper ratio = {nullptr, nullptr, decibelsOfRatio, ratioOfDecibels};
const Taper feedback = {levelCurveAt, levelCurveInverse, nullptr, nullptr};
const Taper threshold = {levelCurveAt, levelCurveInverse, decibelsOfRatio, ratioOfDecibels};
const Taper frequency = {frequencyCurveAt, frequencyCurveInverse, nullptr, nullptr};
const Taper time = {timeCurveAt, timeCurveInverse, nullptr, nullptr};
const Taper octaves = {powerOfTwo, binaryLogarithm, nullptr, nullptr};
const Taper percent = {nullptr, nullptr, percentOfBipolar, bipolarOfPercent};
const Taper level = {nullptr, nullptr, levelToDisplay, levelFromDisplay};

}  // namespace tapers

}  // namespace cinder
