#include "cinder/shaper/ShaperStage.h"

namespace cinder {

namespace {

constexpr float loudestGain = 1000.0f;

/// out = in * gain; one factor for the block while the control rests.
void applyGain(wave::FloatParameterBus& gain, const float* in, float* out,
               int numSamples) noexcept CINDER_REALTIME {
    const float* const factors = gain.pull(numSamples)->data();
    if (gain.isConstant()) {
        const float factor = factors[0];
        for (int i = 0; i < numSamples; ++i)
            out[i] = in[i] * factor;
    } else {
        for (int i = 0; i < numSamples; ++i)
            out[i] = in[i] * factors[i];
    }
}

}  // namespace

ShaperStage::ShaperStage(wave::Environment* environment, sr::IIRConverterStyle* style)
    : Filter(environment),
      drive(environment, 1.0f, 0.0f, loudestGain),
      level(environment, 1.0f, 0.0f, loudestGain),
      style(style),
      interpolator(style->createInterpolator()),
      decimator(style->createDecimator()),
      oversampled(environment->getMaxBlockSize() * style->getMaxFactor()) {
    makeResettable();
}

void ShaperStage::reset() noexcept CINDER_REALTIME {
    interpolator->reset();
    decimator->reset();
}

void ShaperStage::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                          unsigned) noexcept CINDER_REALTIME {
    applyGain(drive, in->data(), out->data(), numSamples);
    shape(out->data(), numSamples);
    applyGain(level, out->data(), out->data(), numSamples);
}

void ShaperStage::shape(float* samples, int numSamples) noexcept CINDER_REALTIME {
    if (!interpolator->process(samples, oversampled.data(), numSamples)) {
        shaper->process(samples, samples, numSamples);
        return;
    }
    shaper->process(oversampled.data(), oversampled.data(), numSamples * style->getFactor());
    decimator->process(oversampled.data(), samples, numSamples);
}

}  // namespace cinder
