#pragma once

#include "dsp/sr/IIRConverter.h"

namespace cinder::sr {

/// Lowers the rate of one channel by its style's factor. Each stage makes one sample of two:
///   y[n] = A(x[2n] / 2) + B(x[2n-1] / 2)
/// Shape   count * factor samples in, `count` out; input and output may not overlap
/// Range   gain 1 in the passband
/// State   that of IIRConverter, and the last input of each stage; same result for any cut of the
///         block, alone or in a group
class IIRDecimator final : public IIRConverter {
public:
    using IIRConverter::IIRConverter;
    using Job = JobOf<IIRDecimator>;

    bool process(const float* input, float* output, int count) noexcept CINDER_REALTIME override;
    void reset() noexcept CINDER_REALTIME override;
    void settle(float value) noexcept CINDER_REALTIME override;
    bool isAtRest() const noexcept CINDER_REALTIME override;

    /// Converts the channels of several decimators of one style, as IIRInterpolator's does. [audio]
    static bool processGroup(std::span<const Job> jobs, int count) noexcept CINDER_REALTIME;

private:
    friend class IIRConverter;
    Channel channel(const float* input, float* output) noexcept CINDER_REALTIME {
        return {state.data(), lastInputs, input, output};
    }

    float lastInputs[maxStages] = {};  // the 2x stage's first
};

}  // namespace cinder::sr
