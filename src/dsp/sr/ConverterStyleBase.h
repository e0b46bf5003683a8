#pragma once

#include <cstdint>
#include <memory>

#include "dsp/sr/ConverterBase.h"

namespace cinder::sr {

/// What the converters of one oversampled path have in common. They hold a plain reference to it
/// and must die first.
/// State   the requested factor, 1 to begin with; it takes effect with the next block
class ConverterStyleBase : public wave::Component {
public:
    explicit ConverterStyleBase(wave::Environment* environment) : Component(environment) {}
    virtual ~ConverterStyleBase() = default;
    ConverterStyleBase(const ConverterStyleBase&) = delete;
    ConverterStyleBase& operator=(const ConverterStyleBase&) = delete;

    virtual std::unique_ptr<ConverterBase> createDecimator() = 0;
    virtual std::unique_ptr<ConverterBase> createInterpolator() = 0;
    /// Samples at the base rate by which an interpolator and a decimator in a row delay a signal;
    /// `factor` is one that getFactor() has answered. [audio]
    virtual std::int32_t getLatency(std::int32_t factor) const noexcept CINDER_REALTIME = 0;
    /// The largest factor this style offers.
    virtual std::int32_t getMaxFactor() const noexcept CINDER_REALTIME = 0;
    /// The factor in force. [audio]
    virtual std::int32_t getFactor() noexcept CINDER_REALTIME { return requestedFactor; }
    /// Only stores the request. Between blocks. [audio]
    virtual void setFactor(std::int32_t factor) noexcept CINDER_REALTIME {
        requestedFactor = factor;
    }

protected:
    std::int32_t requestedFactor = 1;
};

}  // namespace cinder::sr
