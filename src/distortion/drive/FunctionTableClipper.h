#pragma once

#include "distortion/drive/ClipperStyle.h"
#include "distortion/drive/OversampledStage.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Drives a curve and takes its level back: y = post(drive) * c(pre(drive) * x), the curve at the
/// converter style's factor, both gains at the base rate.
///
/// What peaks at the style's reference level leaves at that level and the style's output gain,
/// whatever the drive: the drive changes the shape of a signal and not its level. That holds for
/// the curve itself; the phase shift of the converters moves the peaks of a shape with corners.
///
/// Shape   one channel, and two together as OversampledStage says; two lookups a block while the
///         drive stands still, and two a sample while it moves
/// Range   drive 0..1, limited
/// State   that of the converters; the same bits for any cut of the block. A new style takes effect
///         with the next block, at once, and at any factor by the same step: the converters, which
///         hold levels of the old one, start from the block's first sample. So they do where the
///         drive jumps at a discontinuity
/// Errors  none; without a style the signal passes through the converters as it is
class FunctionTableClipper final : public OversampledStage {
public:
    using Style = ClipperStyle;

    explicit FunctionTableClipper(sr::IIRConverterStyle* converterStyle);

    void setStyle(const Style* newStyle) noexcept CINDER_REALTIME;  ///< [audio]
    const Style* getStyle() const { return style; }

    wave::FloatParameterBus drive;

private:
    void enter(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME override;
    void shape(float* samples, int count) noexcept CINDER_REALTIME override;
    void leave(float* samples, int numSamples) noexcept CINDER_REALTIME override;
    void noticeJump(int numSamples) noexcept CINDER_REALTIME;
    void applyGain(const FunctionTable& gainOfDrive, const float* in, float* out,
                   int numSamples) noexcept CINDER_REALTIME;

    const Style* style = nullptr;  // not owned
    float lastDrive = 0.0f;
};

}  // namespace cinder
