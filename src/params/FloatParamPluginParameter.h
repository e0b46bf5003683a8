#pragma once

#include <vector>

#include "params/FloatPluginParameter.h"
#include "wave/FloatParameter.h"

namespace cinder {

/// Hands its target value to smoothed control values, which go there on their own ramps.
class FloatParamPluginParameter final : public FloatPluginParameter {
public:
    using FloatPluginParameter::FloatPluginParameter;

    /// Lists a control value, not owned. It is not set before the next `applyValue`.
    void addTarget(wave::FloatParameter* target) { targets.push_back(target); }

    void applyValue(float value) noexcept CINDER_REALTIME override;

private:
    std::vector<wave::FloatParameter*> targets;
};

}  // namespace cinder
