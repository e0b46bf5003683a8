#pragma once

#include "params/FloatPluginParameter.h"
#include "wave/FloatParameter.h"

#include <utility>

namespace cinder {

/// A parameter in the unit that people type, for a control value in the unit that a stage takes.
/// The ramp runs in the latter.
class ConvertedPluginParameter final : public FloatPluginParameter {
public:
    using Conversion = float (*)(float) noexcept;

    ConvertedPluginParameter(GenericParameterOwner* owner, std::string name, FloatRange range,
                             Conversion convert)
        : FloatPluginParameter(owner, std::move(name), range), convert(convert) {}

    /// Not owned. It is not set before the next `applyValue`.
    void setTarget(wave::FloatParameter* control) { target = control; }
    void applyValue(float value) noexcept CINDER_REALTIME override {
        target->assign(convert(value));
    }

private:
    Conversion convert;
    wave::FloatParameter* target = nullptr;
};

}  // namespace cinder
