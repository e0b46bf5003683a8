#include "params/FloatParamPluginParameter.h"

namespace cinder {

void FloatParamPluginParameter::applyValue(float value) noexcept CINDER_REALTIME {
    FloatPluginParameter::applyValue(value);
    for (wave::FloatParameter* target : targets)
        target->setValue(targetValue(value), wave::FloatParameter::automaticRamp);
}

}  // namespace cinder
