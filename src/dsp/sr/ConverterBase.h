#pragma once

#include "core/Realtime.h"
#include "wave/Producer.h"

namespace cinder::sr {

/// Converts one channel between the base rate and a multiple of it.
class ConverterBase : public wave::Component {
public:
    explicit ConverterBase(wave::Environment* environment) : Component(environment) {}
    virtual ~ConverterBase() = default;
    ConverterBase(const ConverterBase&) = delete;
    ConverterBase& operator=(const ConverterBase&) = delete;

    /// `count` is the number of samples at the base rate, whichever side that is. On false nothing
    /// has been read or written and the base-rate signal is to be used as it stands. [audio]
    virtual bool process(const float* input, float* output, int count) noexcept CINDER_REALTIME = 0;
    /// [audio]
    virtual void reset() noexcept CINDER_REALTIME = 0;
};

}  // namespace cinder::sr
