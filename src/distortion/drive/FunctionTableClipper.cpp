#include "distortion/drive/FunctionTableClipper.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "core/simd/BlockMath.h"
#include "distortion/drive/GainKernels.h"

namespace cinder {

FunctionTableClipper::FunctionTableClipper(sr::IIRConverterStyle* converterStyle)
    : OversampledStage(converterStyle->getEnvironment(), converterStyle),
      drive(converterStyle->getEnvironment()) {}

void FunctionTableClipper::setStyle(const Style* newStyle) noexcept CINDER_REALTIME {
    if (style && newStyle != style) startFromFirst();
    style = newStyle;
}

void FunctionTableClipper::enter(const float* in, float* out,
                                 int numSamples) noexcept CINDER_REALTIME {
    if (!style) {
        std::copy_n(in, numSamples, out);
        return;
    }
    noticeJump(numSamples);
    applyGain(style->preTable, in, out, numSamples);
}

/// The gain behind the curve would meet what the one before it had made for another drive.
void FunctionTableClipper::noticeJump(int numSamples) noexcept CINDER_REALTIME {
    const float* const drives = drive.pull(numSamples)->data();
    const bool mayJump = environment->getResetPosition() == environment->getPosition();
    if (mayJump && std::abs(drives[0] - lastDrive) > sameValue) startFromFirst();
    if (numSamples > 0) lastDrive = drives[numSamples - 1];
}

void FunctionTableClipper::shape(float* samples, int count) noexcept CINDER_REALTIME {
    if (style) style->shaper->process(samples, samples, count);
}

void FunctionTableClipper::leave(float* samples, int numSamples) noexcept CINDER_REALTIME {
    if (style) applyGain(style->postTable, samples, samples, numSamples);
}

void FunctionTableClipper::applyGain(const FunctionTable& gainOfDrive, const float* in, float* out,
                                     int numSamples) noexcept CINDER_REALTIME {
    const float* const drives = drive.pull(numSamples)->data();
    const GainTable table = {gainOfDrive.values.data(), gainOfDrive.scale, gainOfDrive.size - 1};
    if (!drive.isConstant()) {
        gainKernels->applyTable(table, drives, in, out, numSamples);
        return;
    }
    // By the same function as the moving ones: where in a block a drive comes to rest must not
    // show.
    constexpr float one = 1.0f;
    float gain = 0.0f;
    gainKernels->applyTable(table, drives, &one, &gain, 1);
    simd::scale(in, gain, out, numSamples);
}

}  // namespace cinder
