#pragma once

#include "dsp/sr/IIRConverter.h"

namespace cinder::sr {

/// Raises the rate of one channel by its style's factor. Each stage makes two samples of one:
///   y[2n] = A(x)[n], y[2n+1] = B(x)[n]
/// Shape   `count` samples in, count * factor out; input and output may not overlap
/// Range   each branch runs at gain 1; there is no other gain
/// State   that of IIRConverter; same result for any cut of the block, alone or in a group
class IIRInterpolator final : public IIRConverter {
public:
    using IIRConverter::IIRConverter;
    using Job = JobOf<IIRInterpolator>;

    bool process(const float* input, float* output, int count) noexcept CINDER_REALTIME override;

    /// Converts the channels of several interpolators of one style, as many at a time as a register
    /// of the processor holds: two for the price of one, and up to eight for little more. Each
    /// result has the same bits as from process(). [audio]
    static bool processGroup(std::span<const Job> jobs, int count) noexcept CINDER_REALTIME;

private:
    friend class IIRConverter;
    Channel channel(const float* input, float* output) noexcept CINDER_REALTIME {
        return {state.data(), nullptr, input, output};
    }
};

}  // namespace cinder::sr
