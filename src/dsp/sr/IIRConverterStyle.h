#pragma once

#include <span>

#include "dsp/sr/ConverterStyleBase.h"
#include "dsp/sr/HalfBandStage.h"

namespace cinder::sr {

/// Oversampling by cascades of elliptic half-band stages: little delay, some phase shift.
/// Shape   2^S times the base rate, S <= 3 stages; shared by any number of converters
/// Range   the largest power of 2 that neither the request nor 8 nor the highest rate of a stage
///         forbids; 1 above a base rate of 192000.5 Hz
/// State   the designs for the environment's rate. Whoever notices a new rate first makes them
///         anew: a block, a reset, getFactor(). All stages there can be have their place from the
///         start, so that allocates nothing
/// Source  StageRules.h says which designs, designHalfBand() makes them
class IIRConverterStyle final : public ConverterStyleBase {
public:
    explicit IIRConverterStyle(wave::Environment* environment);

    std::unique_ptr<ConverterBase> createDecimator() override;
    std::unique_ptr<ConverterBase> createInterpolator() override;
    std::int32_t getLatency(std::int32_t factor) const noexcept CINDER_REALTIME override;
    std::int32_t getMaxFactor() const noexcept CINDER_REALTIME override { return 1 << maxStages; }
    std::int32_t getFactor() noexcept CINDER_REALTIME override;

    /// The stages in force, none at factor 1. [audio]
    std::span<const HalfBandStage> getStages() noexcept CINDER_REALTIME;
    /// How often the stages have been designed.
    int getNumDesigns() const { return numDesigns; }

private:
    void bringUpToDate() noexcept CINDER_REALTIME;
    void design() noexcept CINDER_REALTIME;

    HalfBandStage eightfoldStages[maxStages];
    HalfBandStage lowerStages[maxStages - 1];  // for factors 2 and 4
    float designRate = 0.0f;
    std::int32_t factorSeen = 0;
    int numStages = 0;
    int numDesigns = 0;
};

}  // namespace cinder::sr
