#pragma once

#include "core/Property.h"
#include "wave/Producer.h"

namespace cinder {

/// A filter that maps each sample by itself; a constant input is mapped once.
class ValueConverter : public wave::Filter {
public:
    using Filter::Filter;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME final;
    virtual void convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME = 0;
};

/// A gain control in -1..1 as a linear gain: 36 dB per unit, exactly 1 at 0; below -0.6 (-21.6 dB)
/// a parabola in (x + 1) / 2 that reaches silence at -1.
class GainLevelConverter final : public ValueConverter {
public:
    using ValueConverter::ValueConverter;

protected:
    void convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME override;
};

/// Decibels and back. 20 log10 |x| never goes below -180 dB.
class DBConverter final : public ValueConverter {
public:
    enum class Conversion : std::int32_t {
        ToDecibels = 0,      ///< 20 log10 |x|
        ToGain = 1,          ///< 10^(x / 20)
        LossToDecibels = 2,  ///< -20 log10 |1 - x|
        DecibelsToLoss = 3,  ///< 1 - 10^(-x / 20)
    };

    using ValueConverter::ValueConverter;

    Property<Conversion> conversion{Conversion::ToDecibels};

protected:
    void convert(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME override;
};

}  // namespace cinder
