#pragma once

#include "core/Property.h"
#include "wave/Producer.h"

namespace cinder {

/// How far a level has come on its way to a threshold: min(y / threshold, 1) of
///   y[n] = y[n-1] + (x[n] - y[n-1]) * 1000 / (rate * attackTime)
/// Shape   one channel, of a level
/// Range   attackTime in milliseconds, below one sample y is x; threshold above 0
/// State   y; cleared by reset(); same result for any cut of the block
class FilterAnalyzer final : public wave::Filter, public PropertyOwner {
public:
    explicit FilterAnalyzer(wave::Environment* environment, float attackMs = 20.0f,
                            float threshold = 0.005f);

    void reset() noexcept CINDER_REALTIME override { level = 0.0f; }
    void propertyChanged(AbstractProperty* property) override;

    Property<float> attackTime;
    Property<float> threshold;

protected:
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;

private:
    float inverseThreshold;
    float level = 0.0f;
};

}  // namespace cinder
