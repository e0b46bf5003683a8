#include "dsp/filters/FilterAnalyzer.h"

namespace cinder {

FilterAnalyzer::FilterAnalyzer(wave::Environment* environment, float attackMs, float threshold)
    : Filter(environment),
      attackTime(attackMs),
      threshold(threshold, this),
      inverseThreshold(1.0f / threshold) {
    makeResettable();
}

void FilterAnalyzer::propertyChanged(AbstractProperty*) {
    inverseThreshold = 1.0f / threshold;
}

void FilterAnalyzer::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                             int numSamples, unsigned) noexcept CINDER_REALTIME {
    const float wanted = 1000.0f / (environment->getSampleRate() * attackTime);
    const float coefficient = wanted >= 0.0f && wanted < 1.0f ? wanted : 1.0f;
    for (int i = 0; i < numSamples; ++i) {
        level += ((*in)[i] - level) * coefficient;
        (*out)[i] = level >= threshold ? 1.0f : level * inverseThreshold;
    }
}

}  // namespace cinder
