#pragma once

#include "dsp/filters/AnalogFilterPrototype.h"
#include "dsp/filters/BiquadFilter.h"
#include "dsp/filters/ShelvingKernels.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// An equaliser: the AnalogFilterPrototype of its shape and slope by the bilinear transform.
/// Shape   one channel; designs at most every 32 samples, in fast sweeps every 4, and only when a
///         control has moved
/// Range   frequency in log2 of Hz, from 1 Hz; beyond half the sample rate it is as near below it
///         as the transform goes. Gain -30..30 dB. Q 0.025..40, of which 1 is the plain prototype.
///         A gain under 0.05 dB fades the filter out, and at 0 dB the input is handed on as it is
/// State   that of BiquadFilter; sections start from the first input
class EQFilter : public BiquadFilter {
public:
    using Shape = AnalogFilterPrototype::Shape;
    using Slope = FilterSlope;

    explicit EQFilter(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    /// What a linked filter and its partner have before them, if they are to run as part of a row:
    /// something that only `pull` can do, handing the input on, or `getNumSections` sections, with
    /// the coefficients of the last design or with those that `layOut` finds. [audio]
    enum class Standing { Alone, Dry, Still, Moving };
    Standing standing(int numSamples) noexcept CINDER_REALTIME;
    int getNumSections() const { return (polesOf(slope, shape) + 1) / 2; }
    float getWetFactor() const { return wetFactor; }
    /// Whether a block with all else at rest finds the gain, too, where the last design left it;
    /// and whether frequency and Q are knobs of its own, which tell of it when they are set.
    /// [audio]
    bool keepsGain(int numSamples) noexcept CINDER_REALTIME;
    bool canRest() const { return frequency.isOnItsOwn() && q.isOnItsOwn(); }
    bool hasForeignGain() const { return rowOf(shape).usesGain && !gain.isOnItsOwn(); }
    void setRest(wave::Rest* newRest);
    /// The same for its own controls as for the filter. [audio]
    void passedAsPair(std::uint64_t position) noexcept CINDER_REALTIME;
    /// The coefficients of a block in which the filter is `Moving`, for every `fineStep` samples of
    /// it one set, in the order of time. [audio]
    void layOut(int numSamples, BiquadCoefficients* perStep) noexcept CINDER_REALTIME;
    const BiquadCoefficients& getCoefficients(int section) const { return coefficients[section]; }

    /// That of the last design.
    AnalogFilterPrototype getPrototype() const noexcept CINDER_REALTIME;

    wave::FloatParameterBus frequency;
    wave::FloatParameterBus gain;
    wave::FloatParameterBus q;
    Property<Shape> shape{Shape::Bell, this};
    Property<Slope> slope{Slope::Poles2, this};

protected:
    void computeCoefficients(int numSamples,
                             BiquadProcessor& target) noexcept CINDER_REALTIME override;

private:
    struct Settings {
        float log2Hz, gainDb, q;
    };
    /// Those of no design.
    static constexpr Settings none = {-1.0f, 0.0f, 0.0f};

    bool staysWet(const float* gains, int numSamples) const noexcept CINDER_REALTIME;
    bool needsDesign(const Settings& now) const noexcept CINDER_REALTIME;
    bool isShelving() const noexcept CINDER_REALTIME;
    void design(const Settings& now) noexcept CINDER_REALTIME;
    float takeGain(float gainDb) noexcept CINDER_REALTIME;
    void updateLaw() noexcept CINDER_REALTIME;

    Settings designed = none;
    // Of the last design: what depends on the frequency alone, on q alone, and on both.
    float omega = 0.0f;
    double tangent = 0.0;
    double prototypeQ = 1.0;
    ShelvingLaw law;
    float wetFactor = 1.0f;
    float designGainDb = 0.0f;
    BiquadCoefficients coefficients[AnalogFilterPrototype::maxSections];
};

}  // namespace cinder
