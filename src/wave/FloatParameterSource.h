#pragma once

#include "wave/FloatParameter.h"

namespace cinder::wave {

/// A smoothed control value as a producer of blocks.
class FloatParameterSource final : public Source, public ValueAssignable<float> {
public:
    explicit FloatParameterSource(Environment* environment, float initial = 0.0f)
        : Source(environment, true), parameter(environment, initial) {}
    FloatParameterSource(Environment* environment, float initial, float minimum, float maximum)
        : Source(environment, true), parameter(environment, initial, minimum, maximum) {}

    void assign(float value) override { parameter.assign(value); }
    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    FloatParameter parameter;
};

/// The same for a value that somebody else owns.
class FloatParameterForwarder final : public Source {
public:
    FloatParameterForwarder(Environment* environment, FloatParameter* parameter)
        : Source(environment, true), parameter(parameter) {}

    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    FloatParameter* parameter;
};

}  // namespace cinder::wave
