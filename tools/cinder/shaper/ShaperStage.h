#pragma once

#include "core/Realtime.h"
#include "distortion/curves/WaveShaper.h"
#include "dsp/sr/IIRConverterStyle.h"
#include "wave/BasicBlock.h"
#include "wave/FloatParameterBus.h"
#include "wave/Producer.h"

#include <memory>

namespace cinder {

/// Distorts one channel: out = level * down(curve(up(drive * in))), where up and down go to the
/// style's factor times the rate and back. Drive and level are linear gains at the base rate.
/// Shape   one channel, 1..maxBlockSize samples
/// Range   drive and level 0..1000
/// State   the converters'; same result for any cut of the block while the controls rest, and
///         within rounding of their ramps while they move
/// Errors  none
class ShaperStage final : public wave::Filter {
public:
    /// The style must live on until the stage has gone.
    ShaperStage(wave::Environment* environment, sr::IIRConverterStyle* style);

    /// Not owned. [audio]
    void setShaper(WaveShaper* newShaper) noexcept CINDER_REALTIME { shaper = newShaper; }
    void reset() noexcept CINDER_REALTIME override;  ///< [audio]

    wave::FloatParameterBus drive;
    wave::FloatParameterBus level;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    void shape(float* samples, int numSamples) noexcept CINDER_REALTIME;

    sr::IIRConverterStyle* style;
    WaveShaper* shaper = nullptr;
    std::unique_ptr<sr::ConverterBase> interpolator;
    std::unique_ptr<sr::ConverterBase> decimator;
    wave::BasicBlock<float> oversampled;
};

}  // namespace cinder
