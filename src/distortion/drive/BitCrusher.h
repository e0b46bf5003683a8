#pragma once

#include <cstdint>

#include "core/Property.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Samples and holds, and takes bits away. With d the drive at a sample:
///   holds a sample for trunc(d^2 maxHoldSamples) samples, at least one
///   y = floor(s x + 1/2) / s,  s = 2^(23 - sqrt(d) (24 - bitDepth))
/// and with `limitOutput` |y| <= 1 - 0.75 d, for the sample that is taken.
///
/// Shape   one channel
/// Range   drive 0..1, limited; at drive 0 it leaves the signal alone but for rounding to 2^-23
/// State   the sample that is held and for how long; reset() takes the next one anew. The same bits
///         for any cut of the block
/// Errors  none; a NaN stays until the next sample is taken
class BitCrusher final : public wave::Filter {
public:
    explicit BitCrusher(wave::Environment* environment);

    void reset() noexcept CINDER_REALTIME override;  ///< [audio]

    Property<bool> limitOutput{false};
    Property<float> maxHoldSamples{500.0f};
    Property<float> bitDepth{4.0f};
    wave::FloatParameterBus drive;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    struct Crushing;

    Crushing crushingAt(float d) const noexcept CINDER_REALTIME;
    void crushStanding(const float* in, float* out, int numSamples,
                       const Crushing& crushing) noexcept CINDER_REALTIME;
    void crushMoving(const float* in, const float* drives, float* out,
                     int numSamples) noexcept CINDER_REALTIME;

    std::int32_t holdCounter = -1;  // samples for which heldValue has been out; -1 for none
    float heldValue = 0.0f;
};

}  // namespace cinder
