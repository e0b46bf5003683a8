#include "dsp/sr/IIRConverterStyle.h"

#include <algorithm>

#include "dsp/sr/EllipticDesign.h"
#include "dsp/sr/IIRDecimator.h"
#include "dsp/sr/IIRInterpolator.h"
#include "dsp/sr/StageRules.h"

namespace cinder::sr {

namespace {

// All comparisons of rates are in float, as the limits are.
float stageRate(int stage, float baseRate) noexcept {
    return static_cast<float>(2 << stage) * baseRate;
}

void designStage(HalfBandStage& stage, const StageRule& rule) noexcept {
    double coefficients[HalfBandStage::maxCoefficients];
    stage = {};
    stage.numCoefficients = (rule.order - 1) / 2;
    designHalfBand(rule.order, static_cast<double>(rule.edge),
                   {coefficients, static_cast<std::size_t>(stage.numCoefficients)});
    std::transform(coefficients, coefficients + stage.numCoefficients, stage.coefficients,
                   [](double c) { return static_cast<float>(c); });
}

void designStages(std::span<HalfBandStage> stages, const auto& rules, float baseRate) noexcept {
    for (int i = 0; HalfBandStage & stage : stages) {
        const float rate = stageRate(i++, baseRate);
        if (rate > highestStageRate) return;
        designStage(stage, rowForRate(rules, rate));
    }
}

}  // namespace

IIRConverterStyle::IIRConverterStyle(wave::Environment* environment)
    : ConverterStyleBase(environment) {}

std::unique_ptr<ConverterBase> IIRConverterStyle::createDecimator() {
    return std::make_unique<IIRDecimator>(this);
}

std::unique_ptr<ConverterBase> IIRConverterStyle::createInterpolator() {
    return std::make_unique<IIRInterpolator>(this);
}

std::int32_t IIRConverterStyle::getLatency(std::int32_t factor) const noexcept CINDER_REALTIME {
    const LatencyRow& row = rowForRate(latencyRows, environment->getSampleRate());
    switch (factor) {
        case 2:
            return row.atFactor2;
        case 4:
            return row.atFactor4;
        case 8:
            return row.atFactor8;
        default:
            return 0;
    }
}

std::int32_t IIRConverterStyle::getFactor() noexcept CINDER_REALTIME {
    bringUpToDate();
    return 1 << numStages;
}

std::span<const HalfBandStage> IIRConverterStyle::getStages() noexcept CINDER_REALTIME {
    bringUpToDate();
    const HalfBandStage* stages = numStages == maxStages ? eightfoldStages : lowerStages;
    return {stages, static_cast<std::size_t>(numStages)};
}

void IIRConverterStyle::bringUpToDate() noexcept CINDER_REALTIME {
    const bool isRateNew = designRate != environment->getSampleRate();
    if (!isRateNew && factorSeen == requestedFactor) return;
    if (isRateNew) design();
    factorSeen = requestedFactor;
    numStages = 0;
    while (numStages < maxStages && 2 << numStages <= requestedFactor &&
           !(stageRate(numStages, designRate) > highestStageRate))
        ++numStages;
}

void IIRConverterStyle::design() noexcept CINDER_REALTIME {
    designRate = environment->getSampleRate();
    designStages(eightfoldStages, eightfoldRules, designRate);
    designStages(lowerStages, lowerRules, designRate);
    ++numDesigns;
}

}  // namespace cinder::sr
