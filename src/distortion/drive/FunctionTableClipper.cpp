#include "distortion/drive/FunctionTableClipper.h"

#include <algorithm>

#include "core/simd/BlockMath.h"
#include "distortion/drive/Drive.h"

namespace cinder {

FunctionTableClipper::FunctionTableClipper(sr::IIRConverterStyle* converterStyle)
    : OversampledStage(converterStyle->getEnvironment(), converterStyle),
      drive(converterStyle->getEnvironment()) {}

void FunctionTableClipper::enter(const float* in, float* out,
                                 int numSamples) noexcept CINDER_REALTIME {
    if (style)
        applyGain(style->preTable, in, out, numSamples);
    else
        std::copy_n(in, numSamples, out);
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
    if (drive.isConstant()) {
        simd::scale(in, gainOfDrive.lookup(limitedDrive(drives[0])), out, numSamples);
        return;
    }
    for (int i = 0; i < numSamples; ++i)
        out[i] = in[i] * gainOfDrive.lookup(limitedDrive(drives[i]));
}

}  // namespace cinder
