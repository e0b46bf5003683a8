#pragma once

#include "core/Property.h"
#include "wave/FloatParameterBus.h"
#include "wave/Producer.h"
#include "wave/RestOfControls.h"

namespace cinder {

/// From a level to the gain change that it asks for: the static curve of a dynamics processor.
///
/// With d the distance of the level from the threshold, in dB, in the direction that counts:
///   Compress  change = d - d / ratio above the threshold, all of d from a ratio of 100 on
///   Expand    change = d (ratio - 1) below the threshold, the whole knee lying below it
///   Boost     change = d (ratio - 1) above the threshold
/// A knee of width w bends |d| <= h = w / 2 into ((h + d) / w)^2 h; the range limits the change,
/// with a knee of its own.
///
/// Shape   one channel; a ratio that stands at 1 gives a constant block, and so does a constant
///         level under constant controls
/// Range   in the decibel domain a level in dB gives 0..range dB of change; in the linear domain a
///         linear level, not under -180 dB, gives the linear gain of the change, or with Compress
///         what it takes away, 1 - gain. A NaN is no change in the decibel domain and silence in
///         the linear one
/// State   the gate of the hysteresis; the same bits for any cut of the block and from either path.
///         While the ratio stands at 1 the gate stands still
/// Errors  none; against exact arithmetic a change is within 1e-5 dB and a gain within 2e-6 of its
///         size. The rounding of a linear level grows with the ratio: 1e-5 at a ratio of 100
class Detector final : public wave::Filter, public PropertyOwner {
public:
    enum class GainChangeDomain : std::int32_t { Linear = 0, Decibel = 1 };
    enum class Purpose : std::int32_t { Compress = 0, Expand = 1, Boost = 2 };
    /// Logarithmic: 20 log10(|(10^(-threshold / 20) - 1) x| + 1), which bends along the whole way
    /// below the level 0 dB; it compresses by all of it, whatever purpose and ratio are.
    enum class KneeStyle : std::int32_t { Quadratic = 0, Logarithmic = 1 };

    explicit Detector(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;             ///< [audio]
    void propertyChanged(AbstractProperty* property) override;  ///< [audio]

    Property<GainChangeDomain> gainChangeDomain{GainChangeDomain::Decibel, this};
    wave::FloatParameterBus hysteresis;  // dB, for Expand
    wave::FloatParameterBus kneeWidth;   // dB
    Property<KneeStyle> kneeStyle{KneeStyle::Quadratic, this};
    wave::FloatParameterBus rangeKnee;  // dB
    wave::FloatParameterBus range;      // dB
    Property<Purpose> purpose{Purpose::Compress, this};
    wave::FloatParameterBus ratio;
    wave::FloatParameterBus threshold;  // dB

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    /// The control blocks of one cycle.
    struct Controls {
        const float* hysteresis;
        const float* kneeWidth;
        const float* rangeKnee;
        const float* range;
        const float* ratio;
        const float* threshold;
        bool standStill;  // all of them
        bool ratioStandsAtOne;
    };

    void pullControls(int numSamples) noexcept CINDER_REALTIME;
    void bendByFormula(const float* levelDb, float* out, int numSamples) noexcept CINDER_REALTIME;
    void bendByKernel(const float* levelDb, float* out, int numSamples) noexcept CINDER_REALTIME;
    void bendLogarithmically(const float* level, float* out,
                             int numSamples) const noexcept CINDER_REALTIME;
    float heldRatio(float d, float hysteresisDb, float ratioNow) noexcept CINDER_REALTIME;
    void settleGate(const float* levelDb, int numSamples,
                    float thresholdDb) noexcept CINDER_REALTIME;

    Controls controls = {};
    wave::RestOfControls rest;
    wave::ConstValueBlock unchanged;  // gain 1
    bool hysteresisOpen = false;
};

}  // namespace cinder
