#include "dsp/filters/crossover/CrossoverFilter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/Constants.h"
#include "dsp/filters/Bilinear.h"

namespace cinder {

namespace {

constexpr float lowestLog2Hz = 0.0f;
constexpr float highestLog2Hz = 15.0f;
constexpr float never = -1.0f;

/// A NaN becomes the lowest.
float limited(float log2Hz) noexcept {
    return log2Hz >= lowestLog2Hz ? std::min(log2Hz, highestLog2Hz) : lowestLog2Hz;
}

}  // namespace

CrossoverFilter::CrossoverFilter(wave::Environment* environment, Response initialResponse)
    : BiquadFilter(environment, maxSections, BiquadProcessor::Carried::Charge),
      frequency(environment, 10.0f, lowestLog2Hz, highestLog2Hz),
      response(initialResponse, this),
      designedLog2Hz(never) {}

void CrossoverFilter::reset() noexcept CINDER_REALTIME {
    BiquadFilter::reset();
    designedLog2Hz = never;  // the sample rate may be another one
}

void CrossoverFilter::propertyChanged(AbstractProperty* property) {
    BiquadFilter::propertyChanged(property);
    if (property != &response && property != &slope) return;
    isLaidOut = false;
    processor.restartSoftly();
}

void CrossoverFilter::computeCoefficients(int numSamples,
                                          BiquadProcessor& target) noexcept CINDER_REALTIME {
    if (!isLaidOut) layOut();
    const float* const log2Hz = frequency.pull(numSamples)->data();
    const auto schedule = [&](int count) { target.schedule(coefficients, 1.0f, count); };
    const auto isDue = [&](int i, bool finely) {
        constexpr float coarseOctaves = 0.1f;
        const float distance = std::abs(limited(log2Hz[i]) - designedLog2Hz);
        return distance > (finely ? sameValue : coarseOctaves);
    };

    target.setNumSections(std::max(runsTwice ? numFactors * 2 : numFactors, 1));
    if (frequency.isConstant()) {
        if (isDue(0, true)) design(limited(log2Hz[0]));
        return target.hold(coefficients, 1.0f);
    }
    followControls(
        numSamples, true, isDue, [&](int i) { design(limited(log2Hz[i])); }, schedule);
}

/// Finds the factors, which do not depend on the frequency.
void CrossoverFilter::layOut() noexcept CINDER_REALTIME {
    const CrossoverSlopeRow& row = rowOf(slope);
    const bool isAllPass = response == Response::AllPass;
    const bool isEven = row.order % 2 == 0;
    // The sum of low-pass and high-pass of order 1 is 1, an all-pass without factors.
    const int order = isEven || isAllPass ? row.order / 2 : row.order;
    runsTwice = isEven && !isAllPass;
    inverts = row.turnsPhase && response == Response::HighPass;

    numFactors = 0;
    for (int k = 0; k < order / 2; ++k) {
        const double turns = 0.5 - (2 * k + 1) * 0.5 / order;
        factors[numFactors++] = {2, static_cast<float>(0.5 / std::cos(turns * std::numbers::pi))};
    }
    if (order % 2 == 1) factors[numFactors++] = {1, 0.0f};

    isLaidOut = true;
    designedLog2Hz = never;
}

void CrossoverFilter::design(float log2Hz) noexcept CINDER_REALTIME {
    designedLog2Hz = log2Hz;
    const auto tangent = static_cast<double>(
        bilinearTangent(angularFrequency(log2Hz, environment->getSampleRate())));
    coefficients[0] = {};
    for (int i = 0; i < numFactors; ++i)
        coefficients[i] = sectionOf(factors[i], tangent);
    if (!runsTwice) return;
    std::copy_n(coefficients, numFactors, coefficients + numFactors);
    if (!inverts) return;
    BiquadCoefficients& last = coefficients[2 * numFactors - 1];
    last.b0 = -last.b0;
    last.b1 = -last.b1;
    last.b2 = -last.b2;
}

/// For a high-pass the tangent and its reciprocal change places, and so do the ends of the z plane.
BiquadCoefficients CrossoverFilter::sectionOf(const Factor& factor,
                                              double k) const noexcept CINDER_REALTIME {
    if (factor.order == 1) {
        const double m = 1.0 / (k + 1.0);
        const double a1 = (k - 1.0) * m;
        switch (response) {
            case Response::LowPass:
                return {k * m, k * m, 0.0, a1, 0.0};
            case Response::HighPass:
                return {m, -m, 0.0, a1, 0.0};
            case Response::AllPass:
                break;
        }
        return {a1, 1.0, 0.0, a1, 0.0};
    }
    const double t = response == Response::HighPass ? k : 1.0 / k;
    const double u = t / static_cast<double>(factor.q);
    const double m = 1.0 / (u + 1.0 + t * t);
    const double a1 = 2.0 * (response == Response::HighPass ? t * t - 1.0 : 1.0 - t * t) * m;
    const double a2 = (1.0 - u + t * t) * m;
    switch (response) {
        case Response::LowPass:
            return {m, 2.0 * m, m, a1, a2};
        case Response::HighPass:
            return {m, -2.0 * m, m, a1, a2};
        case Response::AllPass:
            break;
    }
    return {a2, a1, 1.0, a1, a2};
}

}  // namespace cinder
